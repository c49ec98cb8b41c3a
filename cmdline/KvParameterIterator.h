// Where a parser takes its words from: an array, or a line that is split at its blanks.

#pragma once

#include <string>

namespace KvCmdLine {

class CKvParameterIterator
{
public:
    virtual ~CKvParameterIterator() = default;

    /// The next word, valid until the next call; null at the end.
    virtual const char* GetNext() = 0;
};

/// The words of an array, which must outlive the iterator.
class CKvParameterIteratorArray : public CKvParameterIterator
{
public:
    /// A null array holds nothing, a null entry ends the words before it.
    CKvParameterIteratorArray(int count, const char* const* words)
        : m_next(words), m_left(words != nullptr ? count : 0)
    {
    }

    const char* GetNext() override;

private:
    const char* const* m_next;
    int m_left;
};

/// The words of a line, which must outlive the iterator. Blanks (space, tab, carriage return, line
/// feed) separate words. They are part of a word between double quotes, which may open and close
/// anywhere in it and end with the line at the latest; "" is an empty word. A double quote itself
/// is written as \" anywhere, or as "" between quotes; every other backslash stands for itself.
class CKvParameterIteratorSplit : public CKvParameterIterator
{
public:
    /// A null line has no words.
    explicit CKvParameterIteratorSplit(const char* line);

    const char* GetNext() override;

private:
    void SkipSeparators();

    const char* m_rest;
    std::string m_word;
};

}  // namespace KvCmdLine
