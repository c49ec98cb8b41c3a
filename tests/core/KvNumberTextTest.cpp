#include "core/KvNumberText.h"

#include <gtest/gtest.h>

#include <bit>
#include <cfloat>
#include <climits>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "tests/support/KvProcess.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

/// Random numbers and texts from a fixed seed.
class CSource
{
public:
    std::uint32_t Bits() { return static_cast<std::uint32_t>(m_random()); }

    /// Numbers, nearly numbers, or several of them.
    std::string Text()
    {
        std::string text;
        for (std::size_t i = Below(3) + 1; i > 0; --i) {
            text += Pick({"", "", " ", "\t\n\v\f\r"}) + Pick({"", "", "-", "+", "+-"});
            text += Pick({"", "", "", "", "0", "0x", "0X", "inf", "INFINITY", "nan", "nan(1_a)"});
            text += Digits() + Pick({"", ".", "."}) + Digits();
            text += Pick({"", "", "e", "E-", "e+", "p", "P-", "x", "\x80"}) + Digits();
        }
        return text;
    }

private:
    std::size_t Below(std::size_t limit) { return Bits() % limit; }
    std::string Pick(std::vector<std::string> texts) { return texts[Below(texts.size())]; }

    std::string Digits()
    {
        if (Below(8) == 0)
            return std::to_string((std::uint64_t{1} << (31 + Below(33))) - 1 + Below(3));
        std::string digits;
        for (std::size_t i = Below(Below(8) == 0 ? 40 : 5); i > 0; --i)
            digits += "0123456789abcdefABCDEF"[Below(Below(8) == 0 ? 22 : 10)];
        return digits;
    }

    std::mt19937 m_random{20240229};
};

std::string Print(const char* format, double value)
{
    char text[400];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

/// A text for each value, the sign of zero and of NaN included.
std::string Exact(double value)
{
    return Print("%a", value);
}

/// Reads value after value until one fails; both readers must agree on each value and position.
template <typename TReference, typename V>
void ExpectScansLike(const char* text, const char* format, bool (*scan)(const char*&, V&))
{
    for (bool isRead = true; isRead;) {
        TReference expected = 77;
        V value = 77;
        int consumed = 0;
        const char* const before = text;
        isRead = std::sscanf(text, format, &expected, &consumed) == 1;
        ASSERT_EQ(scan(text, value), isRead) << before;
        ASSERT_EQ(Exact(value), Exact(static_cast<V>(expected))) << before;
        ASSERT_EQ(text - before, isRead ? consumed : 0) << before;
    }
}

void ExpectReadsLikeC(const std::string& source)
{
    const char* const text = source.c_str();
    const std::wstring wide(source.begin(), source.end());
    SCOPED_TRACE(testing::PrintToString(source.substr(0, 200)));
    long long s64 = 0;
    std::sscanf(text, "%lli", &s64);
    // Integers of 32 bits are read as those of 64 are and then cut, whatever the size of a long.
    ASSERT_EQ(kvStringToS32(text), static_cast<int>(std::strtoll(text, nullptr, 10)));
    ASSERT_EQ(kvStringToU32(text), static_cast<unsigned>(std::strtoull(text, nullptr, 10)));
    ASSERT_EQ(kvStringToS64(text), s64);
    ASSERT_EQ(kvStringToU64(text), static_cast<unsigned long long>(s64));
    ASSERT_EQ(Exact(kvStringToDouble(text)), Exact(std::atof(text)));
    ASSERT_EQ(Exact(kvStringToDouble(wide.c_str())), Exact(std::atof(text)));
    ASSERT_EQ(Exact(kvStringToFloat(text)), Exact(static_cast<float>(std::atof(text))));
    ExpectScansLike<long long>(text, "%lld%n", kvScanInt);
    ExpectScansLike<float>(text, "%f%n", kvScanFloat);
}

std::string ToString(float value)
{
    char text[48];
    kvFloatToString(value, text);
    return text;
}

TEST(KvNumberTextTest, ReadsAndWritesAsTheCLibraryDoes)
{
    CSource source;
    for (int i = 0; i < 60000 && !HasFatalFailure(); ++i) {
        ExpectReadsLikeC(source.Text());
        const auto value = std::bit_cast<float>(source.Bits());
        ASSERT_EQ(ToString(value), Print("%f", value));
        if (i % 12 != 0)
            continue;
        const auto number = std::bit_cast<double>(std::uint64_t{source.Bits()} << 32 | 0x12345677);
        ExpectReadsLikeC(Print("%.200f", (double{value} + std::nextafter(value, 0.0F)) / 2));
        ExpectReadsLikeC(Print("%.17g", number));
        ExpectReadsLikeC(Exact(number));
    }
    // Ties, to an even and to an odd digit, and the ends of the values that integers are used for.
    for (const float value : {0x1p-7F, -0x3p-7F, 0x1.fffffep23F, 0x1p24F, 0.9999996F, -0.0F,
                              0.5e-6F, HUGE_VALF, -HUGE_VALF, -FLT_MAX})
        EXPECT_EQ(ToString(value), Print("%f", value));
}

TEST(KvNumberTextTest, ReadsExtremeTextsAndOtherForms)
{
    const std::string zeros(70000, '0');
    const std::string texts[] = {
        "0x.", "0x.p1", "0xg", "1e+ 2", "089", "-9223372036854775809", "18446744073709551616",
        // The middles between two numbers with a digit to spare.
        "2.4703282292062327e-324", "2.4703282292062328e-324", "1.7976931348623158e308",
        "1.7976931348623159e308", "3.4028235677973366e38", "3.4028235677973367e38",
        "16777217.0000000000000000000001", "9007199254740993.00000000000000000000001",
        "0x1.000001p0", "0x1.fffffffffffff8p1023", "0x1p-1075", "0x1.0000001p-1075",
        // Long digit strings and exponents that take each other back.
        "0." + zeros + "1e70001", "1" + zeros + "e-70000", "0x0." + zeros + "1p280004",
        "0." + zeros + "1e99999999999999999999", "9007199254740993." + zeros + "1",
        "0x1." + zeros + "1p3", "0e99999999999999999999"};
    for (const std::string& text : texts)
        ExpectReadsLikeC(text);
    // glibc 2.36 loses a bit here and rounds down.
    EXPECT_EQ(kvStringToDouble("0x88000485918a84p-1082"), 0x0.088000485918bp-1022);

    char text[48 * 3];
    const float values[] = {1, -0.25F, 3.5e7F};
    EXPECT_EQ(kvFloatsToString(values, 3, text), 34);
    EXPECT_STREQ(text, "1.000000 -0.250000 35000000.000000");
    kvU64ToHexString(0x80000000000012ABULL, text);
    EXPECT_STREQ(text, "0X80000000000012AB");
    EXPECT_EQ(kvScanU64(text), 0x80000000000012ABULL);
    EXPECT_EQ(kvScanU64("18446744073709551616"), ULLONG_MAX);
    EXPECT_EQ(kvStringHexToU32("9abcdef01"), 0xABCDEF01U);
}

TEST(KvNumberTextTest, TheProcessLocaleDoesNotMatter)
{
    const CKvTemporaryFolder folder;
    const CKvProcessResult made = KvRunProcess(
        "/usr/bin/localedef", {"-i", "de_DE", "-f", "UTF-8", "./comma"}, folder.Path());
    ASSERT_EQ(made.status, 0) << "the package \"locales\" is needed: " << made.standardError;
    setenv("LOCPATH", folder.Path().c_str(), 1);
    EXPECT_NE(std::setlocale(LC_ALL, "comma"), nullptr);
    EXPECT_EQ(Print("%.1f", 1.5), "1,5");
    EXPECT_EQ(ToString(1.5F), "1.500000");
    EXPECT_EQ(kvStringToDouble("1.5"), 1.5);
    std::setlocale(LC_ALL, "C");
    unsetenv("LOCPATH");
}

}  // namespace
