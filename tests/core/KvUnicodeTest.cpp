#include "core/KvUnicode.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace std::string_literals;

/// Converts into a buffer that ends right behind the units announced by counting.
std::wstring Decode(const std::string& text, int maxUnits = -1)
{
    std::wstring units(
        static_cast<std::size_t>(kvDecodeUTF8ToUCS2(text.c_str(), nullptr, maxUnits)), L'#');
    EXPECT_EQ(kvDecodeUTF8ToUCS2(text.c_str(), units.data(), maxUnits), std::ssize(units));
    return units;
}

std::string Encode(const std::wstring& text, int maxBytes = -1)
{
    std::string bytes(static_cast<std::size_t>(kvEncodeUCS2ToUTF8(text.c_str(), nullptr, maxBytes)),
                      '#');
    EXPECT_EQ(kvEncodeUCS2ToUTF8(text.c_str(), bytes.data(), maxBytes), std::ssize(bytes));
    return bytes;
}

TEST(KvUnicodeTest, EveryUnitSurvivesTheWayThroughUtf8)
{
    std::wstring units;
    for (wchar_t unit = 1; unit <= 0xFFFF; ++unit)
        units += unit;
    EXPECT_EQ(Decode(Encode(units)), units);

    // Published encodings, and units that do not fit whole.
    EXPECT_EQ(Encode(L"\x00E9\x20AC"), "\xC3\xA9\xE2\x82\xAC");
    EXPECT_EQ(Encode({L'a', static_cast<wchar_t>(0x100E9)}, 3), "a\xC3\xA9");
    EXPECT_EQ(Encode(L"a\x00E9z", 2), "a");
}

TEST(KvUnicodeTest, DecodesWithoutValidatingAndWidensBytes)
{
    EXPECT_EQ(Decode("a\xC3\xA9z", 2), L"a\x00E9");
    EXPECT_EQ(Decode("a\xF0\x9F\x98\x80"), L"a");  // four bytes end the decoding
    EXPECT_EQ(Decode("\xC3z"), L"\x00FA");         // any byte as follower
    for (const char* cut : {"a\xC3", "a\xE2\x82", "a\xE2"})
        EXPECT_EQ(Decode(cut), L"a") << testing::PrintToString(cut);

    wchar_t units[] = L"####";
    kvConvertASCIIToUCS2("a\xE9z", units, 2);
    EXPECT_EQ(std::wstring(units, 4), L"a\x00E9\0#"s);
}

}  // namespace
