#include "core/KvString.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

using CText = TKvString<char>;
using CWideText = TKvString<wchar_t>;

static_assert(sizeof(CText) == sizeof(char*) && sizeof(CWideText) == sizeof(wchar_t*));

/// Made before main, in an order that nothing defines.
const CText kMadeAtStart = CText::STR_EMPTY + CText::EMPTY + "text";

TEST(KvStringTest, EveryWayToTheEmptyTextLeavesNoBuffer)
{
    CText assigned = kMadeAtStart;
    assigned = "";
    CText shortened = "text";
    shortened.SetLength(-1);
    CText moved = "text";
    const CText& left = moved;
    EXPECT_EQ(CText(std::move(moved)), "text");
    const CText null = static_cast<const char*>(nullptr);
    for (const CText* text : {&std::as_const(assigned), &std::as_const(shortened), &left, &null})
        EXPECT_EQ(text->GetText(), CText::EMPTY);
}

TEST(KvStringTest, TakesPartsOfItselfAndOfUnterminatedTexts)
{
    const char units[] = {'a', 'b', 'c'};
    CText text(units, 3);
    const CText copy = text;
    text += text;
    text += text.GetText() + 4;
    EXPECT_EQ(text, "abcabcbc");
    text = text.GetText() + 5;
    text = text.GetText();
    EXPECT_EQ("x" + text + "y" + text, "xcbcycbc");
    EXPECT_EQ(copy, "abc");
    text.SetLength(2);
    text.SetLength(5);
    EXPECT_EQ(std::string(text.GetBuffer(), 6), std::string("cb\0\0\0\0", 6));
}

TEST(KvStringTest, FindsFromBothEnds)
{
    const CText text = "aBcb";
    EXPECT_EQ(text.Find("b", -2), 3);
    EXPECT_EQ(text.Find("bcb", 0, false), 1);
    EXPECT_EQ(text.Find("bcbx", 0, false), -1);
    EXPECT_EQ(text.Find("", 2), 2);
    EXPECT_EQ(text.ReverseFind("Bcb", 3), 1);
    EXPECT_EQ(text.ReverseFind("cbx"), -1);
    EXPECT_EQ(text.ReverseFind("bc", 3, false), 1);
    EXPECT_EQ(CWideText(L"\x00C9@BZ[").Find(L"\x00C9@bz[", 0, false), 0);
}

}  // namespace
