#include "core/KvString.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using CText = TKvString<char>;
using CWideText = TKvString<wchar_t>;

static_assert(sizeof(CText) == sizeof(char*) && sizeof(CWideText) == sizeof(wchar_t*));

/// Made before main, in an order that nothing defines.
const CText kMadeAtStart = CText::STR_EMPTY + CText::EMPTY + "text";

}  // namespace

TEST(KvStringTest, EveryWayToTheEmptyTextLeavesNoBuffer)
{
    CText assigned = "text";
    assigned = "";
    CText shortened = "text";
    shortened.SetLength(0);
    CText negative = "text";
    negative.SetLength(-1);
    CText moved = "text";
    const CText& left = moved;
    const CText target = std::move(moved);
    const CText null = static_cast<const char*>(nullptr);
    const CText none = CText("text", 0);
    const CText fewerThanNone = CText("text", -1);
    const CText sum = CText() + "";
    const CText* const texts[] = {
        &CText::STR_EMPTY, &assigned, &shortened, &negative, &left, &null, &none,
        &fewerThanNone,    &sum};
    for (const CText* text : texts) {
        EXPECT_EQ(text->GetText(), CText::EMPTY);
        EXPECT_EQ(text->GetLength(), 0);
        EXPECT_TRUE(text->IsEmpty());
        EXPECT_EQ(*text, "");
        EXPECT_EQ(*text, static_cast<const char*>(nullptr));
    }
    EXPECT_EQ(target, "text");
    CText blank;
    blank.SetLength(3);
    EXPECT_EQ(blank, CText());
    EXPECT_EQ(kMadeAtStart, "text");
}

TEST(KvStringTest, CopiesAreIndependent)
{
    CText original = "Text";
    CText copy = original;
    copy.ToLower();
    EXPECT_EQ(original, "Text");
    EXPECT_EQ(copy, "text");
    EXPECT_NE(original, copy);
}

TEST(KvStringTest, ABoundedTextNeedsNoTerminator)
{
    const char units[] = {'a', 'b', 'c'};
    EXPECT_EQ(CText(units, 3), "abc");
    EXPECT_EQ(CText("ab", 3), "ab");
}

TEST(KvStringTest, TakesPartsOfItself)
{
    CText text = "abc";
    text += text;
    EXPECT_EQ(text, "abcabc");
    text += text.GetText() + 4;
    EXPECT_EQ(text, "abcabcbc");
    text = text.GetText() + 5;
    EXPECT_EQ(text, "cbc");
    const CText& alias = text;
    text = alias;
    text = text.GetText();
    EXPECT_EQ(text, "cbc");
    EXPECT_EQ("x" + text + "y" + text, "xcbcycbc");
}

TEST(KvStringTest, SetLengthKeepsTheBeginningAndFillsWithZeros)
{
    CText text = "abc";
    text.SetLength(2);
    EXPECT_EQ(text, "ab");
    text.SetLength(5);
    EXPECT_EQ(std::string(text.GetBuffer(), 6), std::string("ab\0\0\0\0", 6));
    text.GetBuffer()[2] = 'C';
    EXPECT_EQ(text, "abC");
}

TEST(KvStringTest, LowersAsciiLettersOnly)
{
    CText narrow = "@AZ[`az{\xC3\x89";
    narrow.ToLower();
    EXPECT_EQ(narrow, "@az[`az{\xC3\x89");
    CWideText wide = L"@AZ[\x00C9";
    wide.ToLower();
    EXPECT_EQ(wide, L"@az[\x00C9");
}

TEST(KvStringTest, FindsFromBothEnds)
{
    struct CCase
    {
        const char* text;
        const wchar_t* wideText;
        const char* needle;
        const wchar_t* wideNeedle;
        int start;
        bool caseSensitive;
        int found;
        int foundInReverse;
    };
    const CCase cases[] = {
        {"abcb", L"abcb", "b", L"b", 0, true, 1, 1},
        {"abcb", L"abcb", "b", L"b", 2, true, 3, 3},
        {"abcb", L"abcb", "b", L"b", -1, true, 1, 3},
        {"abcb", L"abcb", "B", L"B", 0, true, -1, -1},
        {"abcb", L"abcb", "B", L"B", 0, false, 1, 1},
        {"aBcd", L"aBcd", "bC", L"bC", 3, false, -1, 1},
        {"abcb", L"abcb", "a", L"a", 3, true, -1, 0},
        {"abab", L"abab", "aba", L"aba", 2, true, -1, 0},
        {"abcb", L"abcb", "abcbx", L"abcbx", -1, true, -1, -1},
        {"abcb", L"abcb", "", L"", 2, true, 2, 2},
        {"abcb", L"abcb", "b", L"b", 4, true, -1, -1},
        {"abcb", L"abcb", nullptr, nullptr, 0, true, -1, -1},
        {"", L"", "", L"", -1, true, -1, -1},
    };
    for (const CCase& row : cases) {
        SCOPED_TRACE(testing::Message() << row.text << " " << (row.needle ? row.needle : "null")
                                        << " from " << row.start);
        const CText narrow = row.text;
        const CWideText wide = row.wideText;
        EXPECT_EQ(narrow.Find(row.needle, row.start, row.caseSensitive), row.found);
        EXPECT_EQ(wide.Find(row.wideNeedle, row.start, row.caseSensitive), row.found);
        EXPECT_EQ(narrow.ReverseFind(row.needle, row.start, row.caseSensitive), row.foundInReverse);
        EXPECT_EQ(wide.ReverseFind(row.wideNeedle, row.start, row.caseSensitive),
                  row.foundInReverse);
    }
}
