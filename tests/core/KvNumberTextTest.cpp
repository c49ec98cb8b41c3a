#include "core/KvNumberText.h"

#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

namespace {

/// The same bits; of two NaN values only the signs count.
template <typename F>
bool AreSame(F first, F second)
{
    if (std::isnan(first) || std::isnan(second))
        return std::isnan(first) && std::isnan(second) &&
               std::signbit(first) == std::signbit(second);
    return first == second && std::signbit(first) == std::signbit(second);
}

/// Makes texts that are numbers, nearly numbers, or several of them, from a fixed seed.
class CTextSource
{
public:
    std::string Make()
    {
        std::string text;
        const int partCount = 1 + Below(3);
        for (int i = 0; i < partCount; ++i)
            text += Pick({"", "", " ", "\t\n", "\v\f\r"}) + MakeNumber();
        if (Below(6) == 0 && !text.empty())
            text[static_cast<std::size_t>(Below(static_cast<int>(text.size())))] = MakeJunk();
        return text;
    }

    int Below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    std::uint32_t MakeBits() { return static_cast<std::uint32_t>(m_random()); }

private:
    std::string Pick(std::initializer_list<const char*> texts)
    {
        return texts.begin()[Below(static_cast<int>(texts.size()))];
    }

    char MakeJunk() { return "0123456789+-.eExXpPiInNfFaA(),_ z\x80"[Below(35)]; }

    std::string MakeDigits(int limit, const char* digits, int base)
    {
        std::string text;
        for (int i = Below(limit + 1); i > 0; --i)
            text += digits[Below(base)];
        return text;
    }

    std::string MakeDecimals() { return MakeDigits(Below(8) == 0 ? 40 : 6, "0123456789", 10); }

    std::string MakeExponent(const char* mark)
    {
        return mark + Pick({"", "+", "-"}) + MakeDigits(Below(8) == 0 ? 25 : 3, "0123456789", 10);
    }

    std::string MakeNumber()
    {
        const std::string sign = Pick({"", "", "-", "+", "+-"});
        switch (Below(8)) {
            case 0:
                return sign + Pick({"inf", "INF", "infinity", "Infinite", "nan", "NaN", "nan(12)",
                                    "nan(", "in", "na", "infini"});
            case 1:
                return sign + Pick({"0x", "0X"}) + MakeDigits(20, "0123456789abcdefABCDEF", 22) +
                       Pick({"", ".", "."}) + MakeDigits(8, "0123456789abcdef", 16) +
                       Pick({"", MakeExponent("p").c_str(), MakeExponent("P").c_str()});
            case 2:
                return sign + "0" + MakeDigits(24, "01234567", 8);
            case 3:
                return sign + MakeDecimals();
            case 4:
                return sign + std::to_string((std::uint64_t{1} << (31 + Below(33))) - 1) +
                       MakeDigits(1, "0123456789", 10);
            default:
                return sign + MakeDecimals() + Pick({"", ".", "."}) + MakeDecimals() +
                       Pick({"", MakeExponent("e").c_str(), MakeExponent("E").c_str()});
        }
    }

    std::mt19937 m_random{20240229};
};

/// Reads value after value until one fails; both readers must agree on each value and position.
template <typename V>
void ExpectScansLike(const std::string& source, const char* format,
                     bool (*scan)(const char*& text, V& value))
{
    const char* text = source.c_str();
    for (;;) {
        V expected = 77;
        V value = 77;
        int consumed = 0;
        const char* const before = text;
        const bool isRead = std::sscanf(text, format, &expected, &consumed) == 1;
        ASSERT_EQ(scan(text, value), isRead) << before;
        ASSERT_TRUE(AreSame(static_cast<double>(value), static_cast<double>(expected))) << before;
        ASSERT_EQ(text - before, isRead ? consumed : 0) << before;
        if (!isRead)
            return;
    }
}

void ExpectReadsLikeC(const std::string& source)
{
    const char* const text = source.c_str();
    SCOPED_TRACE(testing::PrintToString(source.substr(0, 200)));
    long long s64 = 0;
    std::sscanf(text, "%lli", &s64);
    const double number = std::atof(text);
    ASSERT_EQ(kvStringToS32(text), std::atoi(text));
    ASSERT_EQ(kvStringToU32(text), static_cast<unsigned>(std::strtoul(text, nullptr, 10)));
    ASSERT_EQ(kvStringToS64(text), s64);
    ASSERT_EQ(kvStringToU64(text), static_cast<unsigned long long>(s64));
    ASSERT_PRED2(AreSame<double>, kvStringToDouble(text), number);
    ASSERT_PRED2(AreSame<float>, kvStringToFloat(text), static_cast<float>(number));
    ExpectScansLike<int>(source, "%d%n", kvScanInt);
    ExpectScansLike<float>(source, "%f%n", kvScanFloat);

    std::wstring wide;
    for (const char unit : source)
        wide += static_cast<wchar_t>(static_cast<unsigned char>(unit));
    ASSERT_EQ(kvStringToS32(wide.c_str()), kvStringToS32(text));
    ASSERT_EQ(kvStringToU32(wide.c_str()), kvStringToU32(text));
    ASSERT_EQ(kvStringToU64(wide.c_str()), kvStringToU64(text));
    ASSERT_PRED2(AreSame<double>, kvStringToDouble(wide.c_str()), number);
    ASSERT_EQ(kvStringHexToU32(wide.c_str()), kvStringHexToU32(text));
}

std::string Print(const char* format, double value)
{
    char text[1100];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string ToString(float value)
{
    char text[48];
    kvFloatToString(value, text);
    return text;
}

}  // namespace

TEST(KvNumberTextTest, ReadsGeneratedTextsAsTheCLibraryDoes)
{
    CTextSource source;
    for (int i = 0; i < 60000 && !testing::Test::HasFatalFailure(); ++i)
        ExpectReadsLikeC(source.Make());
}

TEST(KvNumberTextTest, ReadsExtremeTextsAsTheCLibraryDoes)
{
    const std::string zeros(70000, '0');
    const std::string texts[] = {
        "",
        "0x",
        "0x.",
        "0x.p1",
        "0x.8",
        "0xg",
        "-0",
        "-0x",
        "1e 2",
        "1e+ 2",
        "0x1p 2",
        "1.5.5",
        "2147483648",
        "4294967297",
        "9223372036854775808",
        "-9223372036854775809",
        "18446744073709551615",
        "-18446744073709551615",
        "18446744073709551616",
        "0X8000000000000000",
        "0XFFFFFFFFFFFFFFFF",
        "0777777777777777777777",
        "089",
        // The ends of the ranges, and the middles between two numbers with a digit to spare.
        "1e999",
        "-1e999",
        "1e-999",
        "4.9e-324",
        "2.4703282292062327e-324",
        "2.4703282292062328e-324",
        "1.7976931348623158e308",
        "1.7976931348623159e308",
        "3.40282356e38",
        "3.4028235677973366e38",
        "3.4028235677973367e38",
        "1e39",
        "-3.5e38",
        "1.401298464324817e-45",
        "7.006492321624085e-46",
        "7.006492321624086e-46",
        "16777217",
        "16777217.0000000000000000000001",
        "9007199254740993",
        "9007199254740993.00000000000000000000001",
        "0x1.00000100000001p0",
        "0x1.000001p0",
        "0x1.fffffffffffff8p1023",
        "0x1.fffffffffffff7fp1023",
        "0x1p-1074",
        "0x1p-1075",
        "0x1.0000001p-1075",
        "0x0.0000000000001p-1023",
        "0x1.8p-1074",
        // Long digit strings and exponents that take each other back.
        "0." + zeros + "1e70001",
        "1" + zeros + "e-70000",
        "0." + zeros + "1e99999999999999999999",
        "0x0." + zeros + "1p280004",
        zeros + "12",
        "1" + zeros,
        "0." + zeros,
        "0e99999999999999999999",
        "1e-99999999999999999999",
        "1e18446744073709551617",
        "9007199254740993." + zeros + "1",
        "0x1." + zeros + "1p3",
        std::string(2000, '7') + "e-1999",
    };
    for (const std::string& text : texts)
        ExpectReadsLikeC(text);
}

TEST(KvNumberTextTest, RoundsDenormalNumbersOnce)
{
    // glibc 2.36 loses a bit here and rounds these three down.
    const char* text = "0x1.000003p-127";
    float value = 0;
    ASSERT_TRUE(kvScanFloat(text, value));
    EXPECT_EQ(value, 0x1.000004p-127F);
    EXPECT_EQ(kvStringToDouble("0x88000485918a84p-1082"), 0x0.088000485918bp-1022);
    EXPECT_EQ(kvStringToDouble("0x250f0828f0f889p-1078"), 0x0.250f0828f0f89p-1022);
}

TEST(KvNumberTextTest, DecimalTextsOfAllFloatsAndTheirMiddlesReadLikeC)
{
    CTextSource source;
    for (int i = 0; i < 5000 && !testing::Test::HasFatalFailure(); ++i) {
        const float value = std::bit_cast<float>(source.MakeBits());
        const std::uint64_t bits = (std::uint64_t{source.MakeBits()} << 32) | source.MakeBits();
        const double middle = (static_cast<double>(value) + std::nextafter(value, 0.0F)) / 2;
        ExpectReadsLikeC(Print("%.9g", value));
        ExpectReadsLikeC(Print("%.200f", middle));
        ExpectReadsLikeC(Print("%.17g", std::bit_cast<double>(bits)));
        ExpectReadsLikeC(Print("%a", std::bit_cast<double>(bits)));
        ExpectReadsLikeC(Print("%.1074f", std::bit_cast<double>(bits & ~(std::uint64_t{3} << 61))));
    }
}

TEST(KvNumberTextTest, WritesFloatsAsPrintfDoes)
{
    CTextSource source;
    for (int i = 0; i < 50000; ++i) {
        const float value = std::bit_cast<float>(source.MakeBits());
        ASSERT_EQ(ToString(value), Print("%f", value)) << std::bit_cast<std::uint32_t>(value);
    }
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    for (const float value :
         {0.0F, -0.0F, 2.0F, 0.1F, 0.0000005F, 0.5e-6F, 1.0000005F, kInfinity, -kInfinity,
          std::numeric_limits<float>::quiet_NaN(), -std::numeric_limits<float>::quiet_NaN(),
          std::numeric_limits<float>::max(), -std::numeric_limits<float>::denorm_min()})
        EXPECT_EQ(ToString(value), Print("%f", value));
    EXPECT_EQ(ToString(-std::numeric_limits<float>::max()).size(), 47U);
}

TEST(KvNumberTextTest, WritesWhatItsFormatsSay)
{
    char text[48 * 3];
    wchar_t wide[48];
    kvIntToString(INT_MIN, text);
    EXPECT_STREQ(text, "-2147483648");
    kvIntToString(-120, wide);
    EXPECT_STREQ(wide, L"-120");
    kvFloatToString(-1.5F, wide);
    EXPECT_STREQ(wide, L"-1.500000");

    const float values[] = {1, -0.25F, 3.5e7F};
    EXPECT_EQ(kvFloatsToString(values, 3, text), 34);
    EXPECT_STREQ(text, "1.000000 -0.250000 35000000.000000");
    EXPECT_EQ(kvFloatsToString(values, 0, text), 0);
    EXPECT_STREQ(text, "");

    for (const unsigned long long value : {0ULL, 0x12ABULL, 0x8000000000000000ULL, ULLONG_MAX}) {
        char expected[19];
        std::snprintf(expected, sizeof expected, "0X%.16llX", value);
        kvU64ToHexString(value, text);
        EXPECT_STREQ(text, expected);
        EXPECT_EQ(kvScanU64(text), value);
    }
}

TEST(KvNumberTextTest, UnsignedScansReachTheWholeRange)
{
    EXPECT_EQ(kvScanU64(" 18446744073709551615x"), ULLONG_MAX);
    EXPECT_EQ(kvScanU64("18446744073709551616"), ULLONG_MAX);
    EXPECT_EQ(kvScanU64("01777777777777777777777"), ULLONG_MAX);
    EXPECT_EQ(kvScanU64("-1"), ULLONG_MAX);
    EXPECT_EQ(kvScanU64("-18446744073709551615"), 1ULL << 63);
    EXPECT_EQ(kvScanU64("x1"), 0ULL);
}

TEST(KvNumberTextTest, HexadecimalTextsGiveEachUnitItsPlace)
{
    struct CCase
    {
        const char* text;
        unsigned value;
    };
    const CCase cases[] = {
        {"", 0},           {"1F", 31},       {"0x1F", 31}, {"1G", 16}, {"ff", 255},
        {"FFFFFFFF", ~0U}, {"100000000", 0}, {" 1", 1},    {"-1", 1},  {"9abcdef01", 0xABCDEF01},
        {"@`g1", 1}};
    for (const CCase& row : cases)
        EXPECT_EQ(kvStringHexToU32(row.text), row.value) << row.text;
}

TEST(KvNumberTextTest, NullReadsAsZero)
{
    const char* const text = nullptr;
    EXPECT_EQ(kvStringToS32(text), 0);
    EXPECT_EQ(kvStringToU32(text), 0U);
    EXPECT_EQ(kvStringToS64(text), 0);
    EXPECT_EQ(kvScanU64(text), 0U);
    EXPECT_EQ(kvStringToFloat(text), 0.0F);
    EXPECT_EQ(kvStringHexToU32(text), 0U);
}

TEST(KvNumberTextTest, TheProcessLocaleDoesNotMatter)
{
    bool hasComma = false;
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "de_DE", "fr_FR"})
        hasComma = hasComma || std::setlocale(LC_ALL, name) != nullptr;
    if (!hasComma)
        GTEST_SKIP() << "no locale with a decimal comma is installed";
    const std::string printed = Print("%.1f", 1.5);
    const std::string text = ToString(1.5F);
    const double number = kvStringToDouble("1.5");
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(printed, "1,5");
    EXPECT_EQ(text, "1.500000");
    EXPECT_EQ(number, 1.5);
}
