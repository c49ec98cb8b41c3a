#include "core/KvText.h"

#include <algorithm>
#include <string>
#include <type_traits>

namespace {

struct CAsWritten
{
    template <typename T>
    T operator()(T unit) const
    {
        return unit;
    }
};

struct CInLowerCase
{
    template <typename T>
    T operator()(T unit) const
    {
        return kvToLower(unit);
    }
};

constexpr std::size_t kWholeText = static_cast<std::size_t>(-1);

template <typename T, typename Fold>
int Compare(const T* first, const T* second, std::size_t count, Fold fold)
{
    using Unit = std::make_unsigned_t<T>;
    for (std::size_t i = 0; i < count; ++i) {
        const Unit a = fold(static_cast<Unit>(first[i]));
        const Unit b = fold(static_cast<Unit>(second[i]));
        if (a != b)
            return a < b ? -1 : 1;
        if (a == 0)
            return 0;
    }
    return 0;
}

/// \a mayCut says whether a text that does not fit leaves its beginning behind, or nothing.
template <typename T>
bool CopyUnits(T* dst, unsigned dstSize, const T* src, unsigned count, bool mayCut)
{
    if (dst == nullptr || dstSize == 0)
        return dst == nullptr && dstSize == 0 && count == 0;

    dst[0] = T();
    if (count == 0)
        return true;
    if (src == nullptr)
        return false;

    const std::size_t length = kvStrnlen(src, std::min(count, dstSize));
    const bool fits = length < dstSize;
    if (!fits && !mayCut)
        return false;
    const std::size_t copied = fits ? length : dstSize - 1;
    std::char_traits<T>::copy(dst, src, copied);
    dst[copied] = T();
    return fits;
}

template <typename T>
bool CopyWhole(T* dst, unsigned dstSize, const T* src)
{
    return dstSize != 0 && CopyUnits(dst, dstSize, src, dstSize, false);
}

template <typename T>
bool CopyAtMost(T* dst, unsigned dstSize, const T* src, unsigned count)
{
    return CopyUnits(dst, dstSize, src, count, count == UINT_MAX);
}

bool IsDigit(char unit)
{
    return unit >= '0' && unit <= '9';
}

}  // namespace

int kvStrcmp(const wchar_t* first, const wchar_t* second)
{
    return Compare(first, second, kWholeText, CAsWritten());
}

int kvStrncmp(const char* first, const char* second, unsigned count)
{
    return Compare(first, second, count, CAsWritten());
}

int kvStrncmp(const wchar_t* first, const wchar_t* second, unsigned count)
{
    return Compare(first, second, count, CAsWritten());
}

int kvStrcmpNoCase(const char* first, const char* second)
{
    return Compare(first, second, kWholeText, CInLowerCase());
}

int kvStrcmpNoCase(const wchar_t* first, const wchar_t* second)
{
    return Compare(first, second, kWholeText, CInLowerCase());
}

int kvStrncmpNoCase(const char* first, const char* second, unsigned count)
{
    return Compare(first, second, count, CInLowerCase());
}

int kvStrncmpNoCase(const wchar_t* first, const wchar_t* second, unsigned count)
{
    return Compare(first, second, count, CInLowerCase());
}

bool kvStrcpy(char* dst, unsigned dstSize, const char* src)
{
    return CopyWhole(dst, dstSize, src);
}

bool kvStrcpy(wchar_t* dst, unsigned dstSize, const wchar_t* src)
{
    return CopyWhole(dst, dstSize, src);
}

bool kvStrncpy(char* dst, unsigned dstSize, const char* src, unsigned count)
{
    return CopyAtMost(dst, dstSize, src, count);
}

bool kvStrncpy(wchar_t* dst, unsigned dstSize, const wchar_t* src, unsigned count)
{
    return CopyAtMost(dst, dstSize, src, count);
}

EKvNumberForm kvGetNumberForm(const char* text)
{
    if (text == nullptr)
        return EKvNumberForm::None;
    if (*text == '-')
        ++text;
    const char* const begin = text;
    while (IsDigit(*text))
        ++text;
    if (*text == '\0')
        return text != begin ? EKvNumberForm::Int : EKvNumberForm::None;
    if (*text != '.')
        return EKvNumberForm::None;
    do
        ++text;
    while (IsDigit(*text));
    return *text == '\0' ? EKvNumberForm::Float : EKvNumberForm::None;
}
