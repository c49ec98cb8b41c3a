#include "core/KvText.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace {

/// Widens the bytes, each as an unsigned number.
std::wstring Widen(const std::string& text)
{
    std::wstring wide;
    for (const char unit : text)
        wide += static_cast<wchar_t>(static_cast<unsigned char>(unit));
    return wide;
}

/// Eight units after a bounded copy to the second of them, so that every stray write shows.
template <typename T, typename... Arguments>
std::basic_string<T> Surroundings(bool expected, unsigned size, Arguments... arguments)
{
    std::basic_string<T> units(8, T('#'));
    if constexpr (sizeof...(arguments) == 2) {
        EXPECT_EQ(kvStrncpy(units.data() + 1, size, arguments...), expected);
    } else {
        EXPECT_EQ(kvStrcpy(units.data() + 1, size, arguments...), expected);
    }
    return units;
}

}  // namespace

TEST(KvTextTest, ComparesUnsignedUnits)
{
    struct CCase
    {
        const char* first;
        const char* second;
        unsigned count;
        int whole;
        int bounded;
        int boundedNoCase;
    };
    const CCase cases[] = {
        {"", "", 1, 0, 0, 0},
        {"a", "b", 1, -1, -1, -1},
        {"ab", "abc", 2, -1, 0, 0},
        {"abc", "ab", 3, 1, 1, 1},
        {"a", "A", 1, 1, 1, 0},
        {"xyA", "XYb", 2, 1, 1, 0},
        {"z", "\x80", 1, -1, -1, -1},
        {"\xFF", "a", 1, 1, 1, 1},
        {"a", "b", 0, -1, 0, 0},
        {"_", "A", 1, 1, 1, -1},
        {"\xC9", "\xE9", 1, -1, -1, -1},
        {"ab", "ab", UINT_MAX, 0, 0, 0},
    };
    for (const CCase& row : cases) {
        SCOPED_TRACE(std::string(row.first) + " and " + row.second);
        const std::wstring first = Widen(row.first);
        const std::wstring second = Widen(row.second);
        EXPECT_EQ(kvStrcmp(row.first, row.second), row.whole);
        EXPECT_EQ(kvStrcmp(first.c_str(), second.c_str()), row.whole);
        EXPECT_EQ(kvStrncmp(row.first, row.second, row.count), row.bounded);
        EXPECT_EQ(kvStrncmp(first.c_str(), second.c_str(), row.count), row.bounded);
        EXPECT_EQ(kvStrncmpNoCase(row.first, row.second, row.count), row.boundedNoCase);
        EXPECT_EQ(kvStrncmpNoCase(first.c_str(), second.c_str(), row.count), row.boundedNoCase);
    }
    EXPECT_EQ(kvStrcmpNoCase("Level", "lEVEL"), 0);
    EXPECT_EQ(kvStrcmpNoCase(L"Level", L"lEVELs"), -1);
    EXPECT_EQ(kvStrcmp(L"\xFFFF", L"\x0001"), 1);
}

TEST(KvTextTest, BoundedCopiesWriteTheTextOrNothingButATerminator)
{
    using namespace std::string_literals;
    struct CCase
    {
        const char* src;
        unsigned count;
        unsigned size;
        bool copied;
        std::string units;
    };
    const CCase cases[] = {
        {"abc", 3, 4, true, "#abc\0###"s},          {"abc", 2, 4, true, "#ab\0####"s},
        {"ab", 99, 4, true, "#ab\0####"s},          {"abc", 3, 3, false, "#\0######"s},
        {"abcdefghi", 5, 3, false, "#\0######"s},   {"abcdefghi", 2, 3, true, "#ab\0####"s},
        {"abc", 0, 1, true, "#\0######"s},          {"", 9, 1, true, "#\0######"s},
        {"abcd", UINT_MAX, 3, false, "#ab\0####"s}, {"ab", UINT_MAX, 3, true, "#ab\0####"s},
        {"abc", 1, 0, false, "########"s},
    };
    for (const CCase& row : cases) {
        SCOPED_TRACE(testing::Message() << row.src << ", " << row.count << " into " << row.size);
        EXPECT_EQ(Surroundings<char>(row.copied, row.size, row.src, row.count), row.units);
        EXPECT_EQ(Surroundings<wchar_t>(row.copied, row.size, Widen(row.src).c_str(), row.count),
                  Widen(row.units));
    }

    EXPECT_EQ(Surroundings<char>(true, 4, "abc"), "#abc\0###"s);
    EXPECT_EQ(Surroundings<char>(false, 3, "abc"), "#\0######"s);
    EXPECT_EQ(Surroundings<wchar_t>(false, 3, L"abcdefghi"), L"#\0######"s);
    EXPECT_EQ(Surroundings<char>(false, 0, "abc"), "########");
}

TEST(KvTextTest, BoundedCopiesRefuseNull)
{
    const char* const null = nullptr;
    char dst[] = "old";
    EXPECT_FALSE(kvStrcpy(nullptr, 4, "abc"));
    EXPECT_FALSE(kvStrncpy(nullptr, 4, "abc", 0));
    EXPECT_TRUE(kvStrncpy(nullptr, 0, null, 0));
    EXPECT_FALSE(kvStrcpy(dst, sizeof dst, null));
    EXPECT_STREQ(dst, "");
    EXPECT_FALSE(kvStrncpy(dst, sizeof dst, null, 1));
    EXPECT_TRUE(kvStrncpy(dst, sizeof dst, null, 0));
}

TEST(KvTextTest, KnowsIntegersFromFloats)
{
    const char* const integers[] = {"12", "-7", "007", "-0", "99999999999999999999"};
    const char* const floats[] = {"1.5", "-0.25", "5.", ".5", "-.", ".", "-1."};
    const char* const neither[] = {"",    "-",     "+1",  " 1",   "1 ",   "1a",   "--1",
                                   "1-",  "1.2.3", "1e5", "+1.0", " 1.0", "1.0 ", "-",
                                   "1.-", "--.",   "0x1", "1,5",  "inf",  nullptr};
    for (const char* text : integers)
        EXPECT_TRUE(kvIsInt(text) && !kvIsFloat(text)) << text;
    for (const char* text : floats)
        EXPECT_TRUE(kvIsFloat(text) && !kvIsInt(text)) << text;
    for (const char* text : neither)
        EXPECT_FALSE(kvIsFloat(text) || kvIsInt(text)) << (text ? text : "null");
}
