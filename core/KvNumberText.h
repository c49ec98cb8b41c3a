// Conversions between numbers and texts. They never depend on a locale or on the system: every
// result is the one that the C functions named below give on 64-bit Linux (glibc) in the "C"
// locale.
//
// Reading skips blanks (space, \t \n \v \f \r), stops at the first unit that does not fit and gives
// 0 where no number stands; null reads as the empty text. Writing ends with a terminator.

#pragma once

/// As atoi: decimal. A value beyond 64 bits saturates there; the low 32 bits are the result, so
/// that "4294967297" gives 1 and "99999999999999999999" gives -1.
[[nodiscard]] int kvStringToS32(const char* text);
[[nodiscard]] int kvStringToS32(const wchar_t* text);

/// The low 32 bits of strtoul in base 10: a '-' negates modulo 2^64, a value beyond 64 bits gives
/// all ones.
[[nodiscard]] unsigned int kvStringToU32(const char* text);
[[nodiscard]] unsigned int kvStringToU32(const wchar_t* text);

/// As sscanf "%lli": decimal, hexadecimal behind "0x" or "0X", octal behind "0". Saturates at the
/// ends of the signed range, in both forms.
[[nodiscard]] long long kvStringToS64(const char* text);
[[nodiscard]] long long kvStringToS64(const wchar_t* text);
[[nodiscard]] unsigned long long kvStringToU64(const char* text);
[[nodiscard]] unsigned long long kvStringToU64(const wchar_t* text);

/// The grammar of kvStringToS64() over the unsigned range, which every text of kvU64ToHexString()
/// reads back from. Saturates at 2^64 - 1; a negative text gives what kvStringToS64() gives.
[[nodiscard]] unsigned long long kvScanU64(const char* text);

/// The text as hexadecimal digits of either case, modulo 2^32. Any other unit counts as a digit of
/// value 0: "0x1F" gives 31, "1G" gives 16.
[[nodiscard]] unsigned int kvStringHexToU32(const char* text);
[[nodiscard]] unsigned int kvStringHexToU32(const wchar_t* text);

/// As atof: decimal with exponent, hexadecimal with binary exponent ("0x1.8p3"), "inf", "infinity"
/// and "nan" in any case (the payload of "nan(...)" is dropped). Correctly rounded; too large gives
/// infinity, too small a denormal number or 0.
[[nodiscard]] double kvStringToDouble(const char* text);
[[nodiscard]] double kvStringToDouble(const wchar_t* text);

/// kvStringToDouble() rounded to float; a double beyond the float range gives infinity.
[[nodiscard]] float kvStringToFloat(const char* text);
[[nodiscard]] float kvStringToFloat(const wchar_t* text);

/// One "%d" of sscanf: reads an integer as kvStringToS32() does and moves \a text behind it.
///
/// Errors: false when no number is there; \a text and \a value are then as they were.
[[nodiscard]] bool kvScanInt(const char*& text, int& value);

/// One "%f" of sscanf: reads a number, rounded once to float, and moves \a text behind it. It takes
/// more than the number where sscanf does: "1e 2" gives 1 and leaves " 2", "1e+x" leaves "x".
///
/// Errors: false when no number is there, also for "0x" without digits and for a begun "nan" or
///         "infinity"; \a text and \a value are then as they were.
[[nodiscard]] bool kvScanFloat(const char*& text, float& value);

/// Writes "%d".
///
/// Units: \a dst has room for 12 units.
void kvIntToString(int value, char* dst);
void kvIntToString(int value, wchar_t* dst);

/// Writes "%f": six decimals, no exponent; "inf" and "nan", with a '-' where the sign bit is set.
///
/// Units: \a dst has room for 48 units.
void kvFloatToString(float value, char* dst);
void kvFloatToString(float value, wchar_t* dst);

/// Writes the values as kvFloatToString() does, with one blank between two.
///
/// Units: \a dst has room for 48 units a value, one at least; gives the units before the
/// terminator.
int kvFloatsToString(const float* values, int count, char* dst);

/// Writes "0X%.16llX": 16 upper-case hexadecimal digits.
///
/// Units: \a dst has room for 19 units.
void kvU64ToHexString(unsigned long long value, char* dst);
