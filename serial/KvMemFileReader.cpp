#include "serial/KvMemFileReader.h"

#include <algorithm>

CKvMemFileReader::CKvMemFileReader(const void* data, int size)
    : m_cursor(static_cast<const unsigned char*>(data)), m_remaining(std::max(size, 0))
{
}

bool CKvMemFileReader::Refuse(void* out, int n)
{
    m_failed = true;
    if (n > 0)
        std::memset(out, 0, static_cast<std::size_t>(n));
    return false;
}

bool CKvMemFileReader::ReadString(TKvString<char>& out)
{
    const void* terminator = m_failed || m_remaining == 0
                                 ? nullptr
                                 : std::memchr(m_cursor, 0, static_cast<std::size_t>(m_remaining));
    if (terminator == nullptr) {
        m_failed = true;
        out = TKvString<char>();
        return false;
    }
    const char* text = reinterpret_cast<const char*>(m_cursor);
    const auto length = static_cast<int>(static_cast<const unsigned char*>(terminator) - m_cursor);
    out = TKvString<char>::OfLength(text, length);
    m_cursor += length + 1;
    m_remaining -= length + 1;
    return true;
}
