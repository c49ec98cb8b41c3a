#include "core/KvString.h"

#include <algorithm>
#include <string>

namespace {

template <typename T>
std::size_t Length(const T* text)
{
    return text != nullptr ? std::char_traits<T>::length(text) : 0;
}

const char* FindText(const char* text, const char* needle)
{
    return std::strstr(text, needle);
}

const wchar_t* FindText(const wchar_t* text, const wchar_t* needle)
{
    return std::wcsstr(text, needle);
}

template <typename T>
TKvString<T> InLowerCase(const T* text)
{
    TKvString<T> lower(text);
    lower.ToLower();
    return lower;
}

}  // namespace

template <typename T>
constinit const TKvString<T> TKvString<T>::STR_EMPTY{};

template <typename T>
TKvString<T>::TKvString(const T* text) : m_text(Duplicate(text, Length(text)))
{
}

template <typename T>
TKvString<T>::TKvString(const T* text, int maxLength)
    : m_text(Duplicate(text, kvStrnlen(text, static_cast<std::size_t>(std::max(maxLength, 0)))))
{
}

template <typename T>
TKvString<T>::TKvString(const TKvString& other) : TKvString(other.m_text)
{
}

template <typename T>
TKvString<T>& TKvString<T>::operator=(const T* text)
{
    if (text != m_text)
        Adopt(Duplicate(text, Length(text)));
    return *this;
}

template <typename T>
TKvString<T>& TKvString<T>::operator=(const TKvString& other)
{
    if (this != &other)
        *this = other.m_text;
    return *this;
}

template <typename T>
void TKvString<T>::SetLength(int length)
{
    if (length <= 0 || length > kMaxLength) {
        Adopt(nullptr);
        return;
    }
    const auto capacity = static_cast<std::size_t>(length);
    T* const buffer = new T[capacity + 1]();
    std::char_traits<T>::copy(buffer, GetText(), kvStrnlen(GetText(), capacity));
    Adopt(buffer);
}

template <typename T>
void TKvString<T>::ToLower()
{
    for (T* unit = m_text; unit != nullptr && *unit != T(); ++unit)
        *unit = kvToLower(*unit);
}

template <typename T>
int TKvString<T>::Find(const T* needle, int start, bool caseSensitive) const
{
    start = std::max(start, 0);
    if (needle == nullptr || start >= GetLength())
        return -1;
    if (!caseSensitive)
        return InLowerCase(m_text).Find(InLowerCase(needle).GetText(), start);
    const T* const found = FindText(m_text + start, needle);
    return found != nullptr ? static_cast<int>(found - m_text) : -1;
}

template <typename T>
int TKvString<T>::ReverseFind(const T* needle, int start, bool caseSensitive) const
{
    const int length = GetLength();
    if (start == -1)
        start = length - 1;
    if (needle == nullptr || start < 0 || start >= length)
        return -1;
    if (!caseSensitive)
        return InLowerCase(m_text).ReverseFind(InLowerCase(needle).GetText(), start);
    const int behind = Find(needle, start);
    if (behind >= 0)
        return behind;
    const std::size_t needleLength = Length(needle);
    for (int index = start - 1; index >= 0; --index) {
        const auto left = static_cast<std::size_t>(length - index);
        if (needleLength <= left &&
            std::char_traits<T>::compare(m_text + index, needle, needleLength) == 0)
            return index;
    }
    return -1;
}

template <typename T>
T* TKvString<T>::Duplicate(const T* text, std::size_t length)
{
    if (length == 0 || length > kMaxLength)
        return nullptr;
    T* const buffer = new T[length + 1];
    std::char_traits<T>::copy(buffer, text, length);
    buffer[length] = T();
    return buffer;
}

template <typename T>
TKvString<T> TKvString<T>::Join(const T* first, const T* second)
{
    const std::size_t firstLength = Length(first);
    const std::size_t secondLength = Length(second);
    const std::size_t length = firstLength + secondLength;
    TKvString joined;
    if (length == 0 || length > kMaxLength)
        return joined;
    joined.m_text = new T[length + 1];
    if (firstLength > 0)
        std::char_traits<T>::copy(joined.m_text, first, firstLength);
    if (secondLength > 0)
        std::char_traits<T>::copy(joined.m_text + firstLength, second, secondLength);
    joined.m_text[length] = T();
    return joined;
}

template class TKvString<char>;
template class TKvString<wchar_t>;
