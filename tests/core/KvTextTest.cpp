#include "core/KvText.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace {

using namespace std::string_literals;

TEST(KvTextTest, ComparesUnsignedUnits)
{
    EXPECT_EQ(kvStrcmp("z", "\x80"), -1);
    EXPECT_EQ(kvStrcmp(L"\xFFFF", L"\x0001"), 1);
    EXPECT_EQ(kvStrncmp("ab", "abc", 2), 0);
    EXPECT_EQ(kvStrncmp("abc", "ab", UINT_MAX), 1);
    EXPECT_EQ(kvStrcmpNoCase(L"Level", L"lEVELs"), -1);
    EXPECT_EQ(kvStrncmpNoCase("xyA", "XYb", 2), 0);
    EXPECT_EQ(kvStrncmpNoCase("\xC9", "\xE9", 1), -1);
}

TEST(KvTextTest, BoundedCopiesWriteTheTextOrNothingButATerminator)
{
    // The units around the destination are given too, so that every stray write shows.
    const auto copy = [](const char* source, unsigned count, unsigned size) {
        std::string units(6, '#');
        const bool isCopied = kvStrncpy(&units[1], size, source, count);
        return units + (isCopied ? " true" : " false");
    };
    EXPECT_EQ(copy("abc", 3, 4), "#abc\0# true"s);
    EXPECT_EQ(copy("abc", 2, 4), "#ab\0## true"s);
    EXPECT_EQ(copy("abc", 3, 3), "#\0#### false"s);
    EXPECT_EQ(copy(nullptr, 0, 1), "#\0#### true"s);
    EXPECT_EQ(copy(nullptr, 1, 1), "#\0#### false"s);
    EXPECT_EQ(copy("abcd", UINT_MAX, 3), "#ab\0## false"s);
    EXPECT_EQ(copy("ab", UINT_MAX, 3), "#ab\0## true"s);
    EXPECT_EQ(copy("abc", 1, 0), "###### false"s);

    std::string units(5, '#');
    EXPECT_FALSE(kvStrcpy(units.data(), 3, "abc"));
    EXPECT_EQ(units, "\0####"s);
    EXPECT_FALSE(kvStrcpy(nullptr, 4, "abc"));
}

TEST(KvTextTest, KnowsIntegersFromFloats)
{
    for (const char* text : {"12", "-7", "007", "99999999999999999999"})
        EXPECT_TRUE(kvIsInt(text) && !kvIsFloat(text)) << text;
    for (const char* text : {"1.5", "-0.25", "5.", ".5", "-.", "."})
        EXPECT_TRUE(kvIsFloat(text) && !kvIsInt(text)) << text;
    for (const char* text : {"", "-", "+1", " 1", "1 ", "1a", "--1", "1-", "1.2.3", "1e5", "1.-"})
        EXPECT_FALSE(kvIsFloat(text) || kvIsInt(text)) << text;
    EXPECT_FALSE(kvIsFloat(nullptr) || kvIsInt(nullptr));
}

}  // namespace
