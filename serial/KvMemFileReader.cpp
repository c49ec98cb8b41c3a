#include "serial/KvMemFileReader.h"

#include <algorithm>
#include <cstring>

CKvMemFileReader::CKvMemFileReader(const void* data, int size)
    : m_cursor(static_cast<const unsigned char*>(data)), m_remaining(std::max(size, 0))
{
}

bool CKvMemFileReader::Read(void* out, int n)
{
    if (m_failed || n < 0 || n > m_remaining) {
        m_failed = true;
        if (n > 0)
            std::memset(out, 0, static_cast<std::size_t>(n));
        return false;
    }
    if (n > 0)  // an empty image may be null
        std::memcpy(out, m_cursor, static_cast<std::size_t>(n));
    m_cursor += n;
    m_remaining -= n;
    return true;
}

bool CKvMemFileReader::ReadS8(std::int8_t& out)
{
    return Read(&out, sizeof out);
}

bool CKvMemFileReader::ReadU8(std::uint8_t& out)
{
    return Read(&out, sizeof out);
}

bool CKvMemFileReader::ReadS16(std::int16_t& out)
{
    return Read(&out, sizeof out);
}

bool CKvMemFileReader::ReadU16(std::uint16_t& out)
{
    return Read(&out, sizeof out);
}

bool CKvMemFileReader::ReadS32(std::int32_t& out)
{
    return Read(&out, sizeof out);
}

bool CKvMemFileReader::ReadU32(std::uint32_t& out)
{
    return Read(&out, sizeof out);
}

bool CKvMemFileReader::ReadF32(float& out)
{
    return Read(&out, sizeof out);
}

bool CKvMemFileReader::ReadS64(std::int64_t& out)
{
    return Read(&out, sizeof out);
}

bool CKvMemFileReader::ReadU64(std::uint64_t& out)
{
    return Read(&out, sizeof out);
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
    const auto size = static_cast<const unsigned char*>(terminator) - m_cursor + 1;
    out = text;
    m_cursor += size;
    m_remaining -= static_cast<int>(size);
    return true;
}
