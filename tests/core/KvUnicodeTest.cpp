#include "core/KvUnicode.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace std::string_literals;

/// Decodes into a buffer that ends right behind the units announced by counting.
std::wstring Decode(const std::string& text, int maxUnits = -1)
{
    const int count = kvDecodeUTF8ToUCS2(text.c_str(), nullptr, maxUnits);
    std::wstring units(static_cast<std::size_t>(count), L'#');
    EXPECT_EQ(kvDecodeUTF8ToUCS2(text.c_str(), units.data(), maxUnits), count);
    return units;
}

std::string Encode(const std::wstring& text, int maxBytes = -1)
{
    const int count = kvEncodeUCS2ToUTF8(text.c_str(), nullptr, maxBytes);
    std::string bytes(static_cast<std::size_t>(count), '#');
    EXPECT_EQ(kvEncodeUCS2ToUTF8(text.c_str(), bytes.data(), maxBytes), count);
    return bytes;
}

}  // namespace

TEST(KvUnicodeTest, EveryUnitSurvivesTheWayThroughUtf8)
{
    std::wstring units;
    for (wchar_t unit = 1; unit <= 0xFFFF; ++unit)
        units += unit;
    const std::string bytes = Encode(units);
    EXPECT_EQ(bytes.size(), 0x7FU + 2 * 0x780U + 3 * 0xF800U);
    EXPECT_EQ(Decode(bytes), units);
}

TEST(KvUnicodeTest, EncodesWholeCharactersUpToTheLimit)
{
    EXPECT_EQ(Encode(L"\x00E9"), "\xC3\xA9");
    EXPECT_EQ(Encode(L"\x20AC"), "\xE2\x82\xAC");
    EXPECT_EQ(Encode(L"\x00E9", 2), "\xC3\xA9");
    EXPECT_EQ(Encode(L"\x00E9z", 1), "");
    EXPECT_EQ(Encode(L"a\x20ACz", 3), "a");
    EXPECT_EQ(Encode(L"abc", 0), "");
    EXPECT_EQ(Encode(L""), "");
    EXPECT_EQ(kvEncodeUCS2ToUTF8(nullptr, nullptr, -1), 0);
    EXPECT_EQ(Encode({L'a', static_cast<wchar_t>(0x100E9)}), "a\xC3\xA9");
}

TEST(KvUnicodeTest, DecodesWithoutValidating)
{
    struct CCase
    {
        std::string bytes;
        int maxUnits;
        std::wstring units;
    };
    const CCase cases[] = {
        {"", -1, L""},
        {"a\xC3\xA9\xE2\x82\xAC", -1, L"a\x00E9\x20AC"},
        {"a\xC3\xA9\xE2\x82\xAC", 2, L"a\x00E9"},
        {"abc", 0, L""},
        {"\xF0\x9F\x98\x80", -1, L""},
        {"a\xF4z", -1, L"a"},
        {"\x80\xA9", -1, L"\x0029"s},  // a follower as lead
        {"\xC3z", -1, L"\x00FA"s},     // any byte as follower
        {"\xEF\xBF\xBF", -1, L"\xFFFF"},
        {"\xC0\x80z", -1, L"\0z"s},  // an overlong zero is a unit
        {"a\xC3", -1, L"a"},         // the text ends inside a character
        {"a\xE2\x82", -1, L"a"},
        {"a\xE2", -1, L"a"},
    };
    for (const CCase& row : cases)
        EXPECT_EQ(Decode(row.bytes, row.maxUnits), row.units) << testing::PrintToString(row.bytes);
    EXPECT_EQ(kvDecodeUTF8ToUCS2(nullptr, nullptr, -1), 0);
}

TEST(KvUnicodeTest, WidensBytesAndTerminates)
{
    wchar_t dst[] = L"####";
    kvConvertASCIIToUCS2("a\xE9", dst, -1);
    EXPECT_EQ(std::wstring(dst, 4), L"a\x00E9\0#"s);
    const char bytes[] = {'x', 'y'};
    kvConvertASCIIToUCS2(bytes, dst, 2);
    EXPECT_EQ(std::wstring(dst, 4), L"xy\0#"s);
    kvConvertASCIIToUCS2("xy", dst, 0);
    EXPECT_EQ(dst[0], L'\0');
}
