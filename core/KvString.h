// The string of the library: one owned pointer to a zero-terminated buffer of exactly the text's
// size, null for the empty text. Small on purpose, since documents hold thousands of them; the
// price is that lengths are counted anew and every change of content allocates. Narrow texts are
// bytes or UTF-8, wide texts hold 16-bit UCS-2 units.

#pragma once

#include <climits>
#include <cstddef>
#include <utility>

#include "core/KvText.h"

/// A text of char or wchar_t units.
///
/// A text pointer handed in may be null (the empty text) and may point into this very string.
///
/// Errors: a text longer than kMaxLength is refused: the string becomes empty.
template <typename T>
class TKvString
{
    static constexpr T kTerminatorOnly[1] = {};

public:
    static constexpr int kMaxLength = INT_MAX - 1;

    /// The text that is read where a string's pointer is null.
    static constexpr const T* EMPTY = kTerminatorOnly;

    /// The string that look-ups give when they find nothing. Usable during static initialisation.
    static const TKvString STR_EMPTY;

    constexpr TKvString() noexcept = default;
    TKvString(const T* text);

    /// Copies the first \a maxLength units, fewer when the text ends earlier; no unit behind them
    /// is looked at. A negative \a maxLength counts as 0.
    TKvString(const T* text, int maxLength);

    /// Of a text whose length is known, which is then not counted.
    ///
    /// Units: the \a length first units of \a text, none of which is a terminator.
    [[nodiscard]] static TKvString OfLength(const T* text, int length)
    {
        TKvString string;
        string.m_text = Duplicate(text, static_cast<std::size_t>(length));
        return string;
    }

    TKvString(const TKvString& other);
    TKvString(TKvString&& other) noexcept : m_text(std::exchange(other.m_text, nullptr)) {}
    ~TKvString() { delete[] m_text; }

    TKvString& operator=(const T* text);
    TKvString& operator=(const TKvString& other);

    /// Leaves \a other empty, unless it is this string.
    TKvString& operator=(TKvString&& other) noexcept
    {
        Adopt(std::exchange(other.m_text, nullptr));
        return *this;
    }

    /// The units before the terminator. Counted at each call.
    [[nodiscard]] int GetLength() const { return kvStrlen(GetText()); }

    /// The text, never null; valid until the string changes.
    [[nodiscard]] const T* GetText() const { return m_text != nullptr ? m_text : EMPTY; }

    [[nodiscard]] bool IsEmpty() const { return *GetText() == T(); }

    /// The units of the buffer, for writing after SetLength(); null when the string has no buffer.
    [[nodiscard]] T* GetBuffer() { return m_text; }

    /// Makes the buffer \a length + 1 units, keeping the text's beginning and filling with zeros; 0
    /// or less frees it.
    void SetLength(int length);

    void ToLower();

    /// The index of the first occurrence that begins at or after \a start; a negative start is 0.
    ///
    /// Errors: -1 when there is none, for a null needle, and when start is not below the length.
    [[nodiscard]] int Find(const T* needle, int start = 0, bool caseSensitive = true) const;

    /// The index of the first occurrence that begins at or after \a start; when there is none, of
    /// the last one before it. Start -1 is the last unit, so that it gives the last occurrence.
    ///
    /// Errors: -1 when there is none, for a null needle, for a start below -1 and when start is not
    ///         below the length.
    [[nodiscard]] int ReverseFind(const T* needle, int start = -1, bool caseSensitive = true) const;

    TKvString& operator+=(const TKvString& other) { return *this = Join(GetText(), other.m_text); }
    TKvString& operator+=(const T* text) { return *this = Join(GetText(), text); }

    [[nodiscard]] friend TKvString operator+(const TKvString& first, const TKvString& second)
    {
        return Join(first.m_text, second.m_text);
    }
    [[nodiscard]] friend TKvString operator+(const TKvString& first, const T* second)
    {
        return Join(first.m_text, second);
    }
    [[nodiscard]] friend TKvString operator+(const T* first, const TKvString& second)
    {
        return Join(first, second.m_text);
    }

    [[nodiscard]] friend bool operator==(const TKvString& first, const TKvString& second)
    {
        return kvStrcmp(first.GetText(), second.GetText()) == 0;
    }
    [[nodiscard]] friend bool operator==(const TKvString& first, const T* second)
    {
        return kvStrcmp(first.GetText(), second != nullptr ? second : EMPTY) == 0;
    }

private:
    /// A new buffer with the first \a length units; null for 0 and for refused lengths.
    static T* Duplicate(const T* text, std::size_t length);

    /// Either text may be null.
    static TKvString Join(const T* first, const T* second);

    void Adopt(T* buffer) noexcept
    {
        delete[] m_text;
        m_text = buffer;
    }

    T* m_text = nullptr;
};

extern template class TKvString<char>;
extern template class TKvString<wchar_t>;
