#include "core/KvNumberText.h"

#include <algorithm>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string_view>
#include <system_error>
#include <type_traits>

#include "core/KvText.h"

namespace {

constexpr std::size_t kIntSize = 12;
constexpr std::size_t kFloatSize = 48;

template <typename T>
bool IsBlank(T unit)
{
    return unit == T(' ') || (unit >= T('\t') && unit <= T('\r'));
}

/// The value of a digit in any base up to 16; 16 when the unit is none.
template <typename T>
unsigned DigitValue(T unit)
{
    if (unit >= T('0') && unit <= T('9'))
        return static_cast<unsigned>(unit - T('0'));
    const T lower = kvToLower(unit);
    if (lower >= T('a') && lower <= T('f'))
        return static_cast<unsigned>(lower - T('a')) + 10;
    return 16;
}

template <typename T>
const T* SkipBlanks(const T* text)
{
    while (IsBlank(*text))
        ++text;
    return text;
}

template <typename T>
bool ReadSign(const T*& text)
{
    const bool isNegative = *text == T('-');
    if (isNegative || *text == T('+'))
        ++text;
    return isNegative;
}

/// True when the text begins with \a word (in lower case) in any case; moves behind it.
template <typename T>
bool ReadWord(const T*& text, std::string_view word)
{
    for (std::size_t i = 0; i < word.size(); ++i) {
        if (kvToLower(text[i]) != static_cast<T>(word[i]))
            return false;
    }
    text += word.size();
    return true;
}

struct CInteger
{
    std::uint64_t magnitude = 0;  // 2^64 - 1 when the text says more
    bool isNegative = false;
    bool isTooLarge = false;
};

std::int64_t ToSigned(const CInteger& integer)
{
    constexpr std::uint64_t kLargest = std::numeric_limits<std::int64_t>::max();
    if (!integer.isNegative)
        return static_cast<std::int64_t>(std::min(integer.magnitude, kLargest));
    return static_cast<std::int64_t>(0 - std::min(integer.magnitude, kLargest + 1));
}

std::uint64_t ToUnsigned(const CInteger& integer)
{
    return integer.isNegative && !integer.isTooLarge ? 0 - integer.magnitude : integer.magnitude;
}

/// Digits of narrow and wide texts alike, which std::from_chars does not read.
template <typename T>
bool ReadDigits(const T*& text, unsigned base, CInteger& integer)
{
    constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max();
    constexpr std::uint64_t kSurelyFits = kLargest / 16;  // one more digit of any base
    const T* const begin = text;
    for (unsigned digit = DigitValue(*text); digit < base; digit = DigitValue(*++text)) {
        if (integer.magnitude > kSurelyFits && integer.magnitude > (kLargest - digit) / base)
            integer.isTooLarge = true;
        integer.magnitude = integer.isTooLarge ? kLargest : integer.magnitude * base + digit;
    }
    return text != begin;
}

template <typename T>
bool ScanDecimal(const T*& text, CInteger& integer)
{
    const T* rest = SkipBlanks(text);
    integer.isNegative = ReadSign(rest);
    if (!ReadDigits(rest, 10, integer))
        return false;
    text = rest;
    return true;
}

template <typename T>
CInteger ReadDecimal(const T* text)
{
    CInteger integer;
    if (text != nullptr)
        ScanDecimal(text, integer);
    return integer;
}

/// The base follows from the text's prefix. A prefix without digits is the number 0.
template <typename T>
CInteger ReadPrefixed(const T* text)
{
    CInteger integer;
    if (text == nullptr)
        return integer;
    text = SkipBlanks(text);
    integer.isNegative = ReadSign(text);
    const unsigned base = ReadWord(text, "0x") ? 16 : *text == T('0') ? 8 : 10;
    ReadDigits(text, base, integer);
    return integer;
}

template <typename T>
unsigned ReadHexDigits(const T* text)
{
    std::uint32_t value = 0;  // unsigned arithmetic is the modulo
    for (; text != nullptr && *text != T(); ++text)
        value = value * 16 + DigitValue(*text) % 16;  // no digit counts 0
    return value;
}

/// Digits that can decide how a double rounds: the exact middle between two doubles has at most 768
/// decimal digits. What is behind them only counts as zero or not.
constexpr int kMaxDigits = 800;

/// Exponents beyond are far outside of every double, whatever the base.
constexpr std::int64_t kMaxExponent = 5000;

/// Written exponents saturate here: more than any text is long, little enough to add to.
constexpr std::int64_t kExponentCap = std::int64_t{1} << 56;

struct CNotation
{
    unsigned base;
    char exponentMark;
    int exponentPerDigit;
    std::chars_format format;
};

constexpr CNotation kDecimal = {10, 'e', 1, std::chars_format::scientific};
constexpr CNotation kHexadecimal = {16, 'p', 4, std::chars_format::hex};

/// The digits of a number as one integer without leading zeros, and the exponent to scale it with:
/// narrow and wide texts of any length come into this one short form, which std::from_chars reads.
struct CDigits
{
    char text[kMaxDigits + 32];
    int count = 0;
    std::int64_t exponent = 0;

    void Append(char digit) { text[count++] = digit; }
};

/// Gives the exponent behind \a text; 0 when none is there or its mark has no digits behind it.
template <typename T>
std::int64_t ReadExponent(const T* text, const CNotation& notation)
{
    if (kvToLower(*text) != static_cast<T>(notation.exponentMark))
        return 0;
    ++text;
    const bool isNegative = ReadSign(text);
    CInteger integer;
    ReadDigits(text, 10, integer);
    const auto exponent =
        static_cast<std::int64_t>(std::min<std::uint64_t>(integer.magnitude, kExponentCap));
    return isNegative ? -exponent : exponent;
}

/// False when there is no digit before or behind the point.
template <typename T>
bool ReadNumber(const T* text, const CNotation& notation, CDigits& digits)
{
    bool hasDigit = false;
    bool hasPoint = false;
    bool hasRest = false;
    for (;; ++text) {
        const unsigned digit = DigitValue(*text);
        if (digit >= notation.base) {
            if (*text != T('.') || hasPoint)
                break;
            hasPoint = true;
            continue;
        }
        hasDigit = true;
        digits.exponent -= hasPoint ? 1 : 0;
        if (digits.count == kMaxDigits) {
            ++digits.exponent;
            hasRest = hasRest || digit != 0;
        } else if (digits.count > 0 || digit != 0) {
            digits.Append(static_cast<char>(*text));
        }
    }
    if (hasRest) {
        digits.Append('1');
        --digits.exponent;
    }
    digits.exponent *= notation.exponentPerDigit;
    digits.exponent += ReadExponent(text, notation);
    return hasDigit;
}

template <typename F>
F ToFloat(CDigits& digits, const CNotation& notation)
{
    if (digits.count == 0)
        return 0;
    const std::int64_t order =
        digits.exponent + std::int64_t{digits.count} * notation.exponentPerDigit;
    const F outOfRange = order > 0 ? std::numeric_limits<F>::infinity() : F(0);
    if (order > kMaxExponent || order < -kMaxExponent)
        return outOfRange;

    digits.Append(notation.exponentMark);
    const char* const end =
        std::to_chars(digits.text + digits.count, std::end(digits.text), digits.exponent).ptr;
    F value = 0;
    const auto result = std::from_chars(digits.text, end, value, notation.format);
    return result.ec == std::errc() ? value : outOfRange;
}

/// Reads a decimal number that is short and has no exponent, as documents are full of. Where digits
/// and power of ten are both exact as doubles, dividing them rounds correctly: the fast path of
/// W. D. Clinger, "How to Read Floating Point Numbers Accurately", PLDI 1990. False for all else.
template <typename T>
bool ReadShortDecimal(const T* text, double& value)
{
    constexpr double kPowersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                       1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    constexpr int kExactDigits = 15;  // each number of so many is below 2^53
    std::uint64_t digits = 0;
    int count = 0;
    const T* point = nullptr;
    for (;; ++text) {
        if (*text >= T('0') && *text <= T('9')) {
            digits = digits * 10 + static_cast<unsigned>(*text - T('0'));
            if (++count > kExactDigits)
                return false;
        } else if (*text == T('.') && point == nullptr) {
            point = text;
        } else {
            break;
        }
    }
    const T end = kvToLower(*text);
    if (count == 0 || end == T('e') || end == T('x'))
        return false;
    const std::ptrdiff_t decimals = point != nullptr ? text - point - 1 : 0;
    value = static_cast<double>(digits) / kPowersOfTen[decimals];
    return true;
}

/// Reads what can stand behind a sign. False when no number does.
template <typename F, typename T>
bool ReadUnsigned(const T* text, F& value)
{
    // A float made of the double would be rounded twice.
    if constexpr (std::is_same_v<F, double> && FLT_EVAL_METHOD == 0) {
        if (ReadShortDecimal(text, value))
            return true;
    }
    if (ReadWord(text, "inf")) {
        value = std::numeric_limits<F>::infinity();
        return true;
    }
    if (ReadWord(text, "nan")) {
        value = std::numeric_limits<F>::quiet_NaN();
        return true;
    }

    CDigits digits;
    const bool isHexadecimal = ReadWord(text, "0x");
    const CNotation& notation = isHexadecimal ? kHexadecimal : kDecimal;
    const bool hasDigit = ReadNumber(text, notation, digits);
    value = hasDigit ? ToFloat<F>(digits, notation) : F(0);
    return hasDigit || isHexadecimal;  // "0x" alone still has its 0
}

template <typename F, typename T>
F ReadFloat(const T* text)
{
    if (text == nullptr)
        return 0;
    text = SkipBlanks(text);
    const bool isNegative = ReadSign(text);
    F value = 0;
    if (!ReadUnsigned(text, value))
        return 0;
    return isNegative ? -value : value;
}

/// Rounds to nearest as IEEE 754 does, with the cases that the language leaves undefined spelled
/// out.
float Narrow(double value)
{
    constexpr double kLargest = std::numeric_limits<float>::max();
    constexpr double kRoundsToInfinity = 0x1.ffffffp127;
    const double magnitude = std::fabs(value);
    if (magnitude >= kRoundsToInfinity)
        return std::signbit(value) ? -std::numeric_limits<float>::infinity()
                                   : std::numeric_limits<float>::infinity();
    if (magnitude > kLargest)
        return static_cast<float>(std::copysign(kLargest, value));
    return static_cast<float>(value);
}

/// What sscanf takes for a "%f", behind blanks and sign: at each unit it asks only whether a number
/// could go on like this, so it takes "1e" or "0x1p+" whole. Null when there is no number.
const char* SkipScannedFloat(const char* text)
{
    if (ReadWord(text, "nan"))
        return text;
    if (ReadWord(text, "inf"))
        return kvToLower(*text) != 'i' || ReadWord(text, "inity") ? text : nullptr;

    const bool isHexadecimal = ReadWord(text, "0x");
    const CNotation& notation = isHexadecimal ? kHexadecimal : kDecimal;
    const char* const begin = text;
    bool hasDigit = false;
    bool hasPoint = false;
    for (;; ++text) {
        if (DigitValue(*text) < notation.base)
            hasDigit = true;
        else if (*text == '.' && !hasPoint)
            hasPoint = true;
        else
            break;
    }
    if (text == begin || (!hasDigit && !isHexadecimal))
        return nullptr;  // a hexadecimal "0x." still is the number 0
    if (hasDigit && kvToLower(*text) == notation.exponentMark) {
        ++text;
        ReadSign(text);
        while (DigitValue(*text) < 10)
            ++text;
    }
    return text;
}

/// Gives the end of what it wrote, without a terminator; so does WriteFloat().
char* WriteInt(int value, char* dst)
{
    return std::to_chars(dst, dst + kIntSize, value).ptr;
}

/// Floats below are written in integers, those from here on by std::to_chars.
constexpr float kSmallFloatEnd = 0x1p24F;

/// "%f" of what nearly all values of documents are, in a quarter of the time of std::to_chars: a
/// float has 24 binary digits and a million 20, so that their product is exact in a double. No
/// branch depends on the digits, which would be guessed wrongly half of the time.
char* WriteSmallFloat(float magnitude, char* dst)
{
    constexpr std::uint64_t kMillion = 1'000'000;
    const double exact = double{magnitude} * double{kMillion};
    const auto below = static_cast<std::int64_t>(exact);
    const double rest = exact - static_cast<double>(below);
    const int tieGoesUp = static_cast<int>(below & 1);  // to even
    const int goesUp = int{rest > 0.5} | (int{rest == 0.5} & tieGoesUp);
    const auto millionths = static_cast<std::uint64_t>(below + goesUp);

    const auto whole = static_cast<std::uint32_t>(millionths / kMillion);
    auto decimals = static_cast<std::uint32_t>(millionths % kMillion);
    dst = std::to_chars(dst, dst + kIntSize, whole).ptr;
    *dst = '.';
    for (int place = 6; place > 0; --place) {
        dst[place] = static_cast<char>('0' + decimals % 10);
        decimals /= 10;
    }
    return dst + 7;
}

char* WriteFloat(float value, char* dst)
{
    const float magnitude = std::fabs(value);
    if (magnitude < kSmallFloatEnd) {
        *dst = '-';  // stays for negative values
        return WriteSmallFloat(magnitude, dst + int{std::signbit(value)});
    }
    if (std::isfinite(value)) {
        const double exact = value;
        return std::to_chars(dst, dst + kFloatSize, exact, std::chars_format::fixed, 6).ptr;
    }
    if (std::signbit(value))
        *dst++ = '-';
    const std::string_view word = std::isnan(value) ? "nan" : "inf";
    return std::copy(word.begin(), word.end(), dst);
}

void WidenDigits(const char* begin, const char* end, wchar_t* dst)
{
    *std::copy(begin, end, dst) = L'\0';
}

}  // namespace

int kvStringToS32(const char* text)
{
    return static_cast<int>(ToSigned(ReadDecimal(text)));
}

int kvStringToS32(const wchar_t* text)
{
    return static_cast<int>(ToSigned(ReadDecimal(text)));
}

unsigned int kvStringToU32(const char* text)
{
    return static_cast<unsigned int>(ToUnsigned(ReadDecimal(text)));
}

unsigned int kvStringToU32(const wchar_t* text)
{
    return static_cast<unsigned int>(ToUnsigned(ReadDecimal(text)));
}

long long kvStringToS64(const char* text)
{
    return ToSigned(ReadPrefixed(text));
}

long long kvStringToS64(const wchar_t* text)
{
    return ToSigned(ReadPrefixed(text));
}

unsigned long long kvStringToU64(const char* text)
{
    return static_cast<unsigned long long>(kvStringToS64(text));
}

unsigned long long kvStringToU64(const wchar_t* text)
{
    return static_cast<unsigned long long>(kvStringToS64(text));
}

unsigned long long kvScanU64(const char* text)
{
    const CInteger integer = ReadPrefixed(text);
    return integer.isNegative ? static_cast<std::uint64_t>(ToSigned(integer)) : integer.magnitude;
}

unsigned int kvStringHexToU32(const char* text)
{
    return ReadHexDigits(text);
}

unsigned int kvStringHexToU32(const wchar_t* text)
{
    return ReadHexDigits(text);
}

double kvStringToDouble(const char* text)
{
    return ReadFloat<double>(text);
}

double kvStringToDouble(const wchar_t* text)
{
    return ReadFloat<double>(text);
}

float kvStringToFloat(const char* text)
{
    return Narrow(ReadFloat<double>(text));
}

float kvStringToFloat(const wchar_t* text)
{
    return Narrow(ReadFloat<double>(text));
}

bool kvScanInt(const char*& text, int& value)
{
    CInteger integer;
    if (!ScanDecimal(text, integer))
        return false;
    value = static_cast<int>(ToSigned(integer));
    return true;
}

bool kvScanFloat(const char*& text, float& value)
{
    const char* const begin = SkipBlanks(text);
    const char* number = begin;
    ReadSign(number);
    const char* const end = SkipScannedFloat(number);
    if (end == nullptr)
        return false;
    value = ReadFloat<float>(begin);
    text = end;
    return true;
}

void kvIntToString(int value, char* dst)
{
    *WriteInt(value, dst) = '\0';
}

void kvIntToString(int value, wchar_t* dst)
{
    char digits[kIntSize];
    WidenDigits(digits, WriteInt(value, digits), dst);
}

void kvFloatToString(float value, char* dst)
{
    *WriteFloat(value, dst) = '\0';
}

void kvFloatToString(float value, wchar_t* dst)
{
    char digits[kFloatSize];
    WidenDigits(digits, WriteFloat(value, digits), dst);
}

int kvFloatsToString(const float* values, int count, char* dst)
{
    char* end = dst;
    for (int i = 0; i < count; ++i) {
        if (i > 0)
            *end++ = ' ';
        end = WriteFloat(values[i], end);
    }
    *end = '\0';
    return static_cast<int>(end - dst);
}

void kvU64ToHexString(unsigned long long value, char* dst)
{
    constexpr char kDigits[] = "0123456789ABCDEF";
    *dst++ = '0';
    *dst++ = 'X';
    for (int shift = 60; shift >= 0; shift -= 4)
        *dst++ = kDigits[(value >> shift) & 0xF];
    *dst = '\0';
}
