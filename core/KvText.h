// Lengths, comparisons and bounded copies of zero-terminated texts, narrow and wide. Units compare
// as unsigned numbers. Letter case means ASCII 'A' to 'Z' only and never depends on a locale.

#pragma once

#include <climits>
#include <cstddef>
#include <cstring>
#include <cwchar>
#include <string>
#include <type_traits>

/// ASCII upper case becomes lower case; every other unit stays.
template <typename T>
[[nodiscard]] constexpr T kvToLower(T unit)
{
    return unit >= T('A') && unit <= T('Z') ? static_cast<T>(unit + (T('a') - T('A'))) : unit;
}

/// The units before the terminator; INT_MAX when there are more.
[[nodiscard]] inline int kvStrlen(const char* text)
{
    const std::size_t length = std::strlen(text);
    return length < INT_MAX ? static_cast<int>(length) : INT_MAX;
}
[[nodiscard]] inline int kvStrlen(const wchar_t* text)
{
    const std::size_t length = std::wcslen(text);
    return length < INT_MAX ? static_cast<int>(length) : INT_MAX;
}

/// The units before the terminator, of which only the first \a limit are looked at; 0 for null.
template <typename T>
[[nodiscard]] constexpr std::size_t kvStrnlen(const T* text, std::size_t limit)
{
    if (text == nullptr)
        return 0;
    if constexpr (std::is_same_v<T, char>) {  // memchr alone may be given more than there is
        const T* end = std::char_traits<T>::find(text, limit, T());
        return end != nullptr ? static_cast<std::size_t>(end - text) : limit;
    }
    std::size_t length = 0;
    while (length < limit && text[length] != T())
        ++length;
    return length;
}

/// -1, 0 or 1; the shorter of two texts that start alike sorts first.
[[nodiscard]] inline int kvStrcmp(const char* first, const char* second)
{
    const int difference = std::strcmp(first, second);
    return (difference > 0) - (difference < 0);
}
[[nodiscard]] int kvStrcmp(const wchar_t* first, const wchar_t* second);

/// As kvStrcmp() over the first \a count units at most.
[[nodiscard]] int kvStrncmp(const char* first, const char* second, unsigned count);
[[nodiscard]] int kvStrncmp(const wchar_t* first, const wchar_t* second, unsigned count);

/// As kvStrcmp() and kvStrncmp() of the texts in lower case.
[[nodiscard]] int kvStrcmpNoCase(const char* first, const char* second);
[[nodiscard]] int kvStrcmpNoCase(const wchar_t* first, const wchar_t* second);
[[nodiscard]] int kvStrncmpNoCase(const char* first, const char* second, unsigned count);
[[nodiscard]] int kvStrncmpNoCase(const wchar_t* first, const wchar_t* second, unsigned count);

/// Copies a text with its terminator. The texts must not overlap; both may be null.
///
/// Units:  \a dstSize in units, the terminator's included.
/// Errors: false when the text does not fit or is null; the destination is then the empty text.
///         False and nothing written when the destination is null or has no room at all.
[[nodiscard]] bool kvStrcpy(char* dst, unsigned dstSize, const char* src);
[[nodiscard]] bool kvStrcpy(wchar_t* dst, unsigned dstSize, const wchar_t* src);

/// Copies the first \a count units of a text (fewer when it ends earlier) and a terminator; units
/// behind them are not looked at. UINT_MAX as count copies as many as the destination takes.
///
/// Errors: as kvStrcpy(); false also when UINT_MAX cut the text, whose beginning is then there. A
///         count of 0 needs no source, and with size 0 no destination.
[[nodiscard]] bool kvStrncpy(char* dst, unsigned dstSize, const char* src, unsigned count);
[[nodiscard]] bool kvStrncpy(wchar_t* dst, unsigned dstSize, const wchar_t* src, unsigned count);

/// What a text is as a number.
enum class EKvNumberForm
{
    None,
    Int,
    Float
};

/// Int for an optional '-' and at least one digit, nothing else. Float for an optional '-', then
/// digits and exactly one '.', nothing else: "1.5", "5." and "." are floats, "12" and "1e5" are
/// not. None for null.
[[nodiscard]] EKvNumberForm kvGetNumberForm(const char* text);

[[nodiscard]] inline bool kvIsInt(const char* text)
{
    return kvGetNumberForm(text) == EKvNumberForm::Int;
}

[[nodiscard]] inline bool kvIsFloat(const char* text)
{
    return kvGetNumberForm(text) == EKvNumberForm::Float;
}
