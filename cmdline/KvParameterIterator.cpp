#include "cmdline/KvParameterIterator.h"

#include <cstddef>

namespace KvCmdLine {

namespace {

constexpr std::size_t kInitialWordCapacity = 100;

bool IsSeparator(char unit)
{
    return unit == ' ' || unit == '\t' || unit == '\r' || unit == '\n';
}

}  // namespace

const char* CKvParameterIteratorArray::GetNext()
{
    if (m_left <= 0)
        return nullptr;
    --m_left;
    return *m_next++;
}

CKvParameterIteratorSplit::CKvParameterIteratorSplit(const char* line)
    : m_rest(line != nullptr ? line : "")
{
    m_word.reserve(kInitialWordCapacity);
    SkipSeparators();
}

const char* CKvParameterIteratorSplit::GetNext()
{
    if (*m_rest == '\0')
        return nullptr;

    m_word.clear();
    bool isQuoted = false;
    for (; *m_rest != '\0' && (isQuoted || !IsSeparator(*m_rest)); ++m_rest) {
        const bool isBeforeQuote = m_rest[1] == '"';
        if (isBeforeQuote && (*m_rest == '\\' || (*m_rest == '"' && isQuoted)))
            m_word += *++m_rest;
        else if (*m_rest == '"')
            isQuoted = !isQuoted;
        else
            m_word += *m_rest;
    }
    SkipSeparators();
    return m_word.c_str();
}

void CKvParameterIteratorSplit::SkipSeparators()
{
    while (IsSeparator(*m_rest))
        ++m_rest;
}

}  // namespace KvCmdLine
