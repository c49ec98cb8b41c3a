// CKvSerialBuffer: the caller's buffer as the saver and the loader walk through it, with the one
// check that keeps both inside.

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

/// Fields stand in the documented order.
///
/// Ownership: the buffer is the caller's and must outlive this object.
class CKvSerialBuffer
{
public:
    /// Of a \a length beyond 32 bits only the first 4,294,967,295 bytes are used.
    CKvSerialBuffer(unsigned char* buffer, unsigned long length)
        : m_cursor(buffer),
          m_length(static_cast<std::uint32_t>(
              std::min<std::uint64_t>(length, std::numeric_limits<std::uint32_t>::max())))
    {
    }

    /// Moves past the next \a sizeBytes bytes and gives their start.
    ///
    /// Errors: null when fewer bytes are left or the size is negative; this and every later call
    ///         then fail, so a sequence is either complete or marked as failed.
    unsigned char* Advance(int sizeBytes)
    {
        if (m_overflowed || sizeBytes < 0 ||
            static_cast<std::uint32_t>(sizeBytes) > m_length - m_used) {
            m_overflowed = true;
            return nullptr;
        }
        unsigned char* start = m_cursor;
        m_cursor += sizeBytes;
        m_used += static_cast<std::uint32_t>(sizeBytes);
        return start;
    }

    bool HasOverflowed() const { return m_overflowed; }
    long GetFree() const { return static_cast<long>(m_length - m_used); }
    std::uint32_t GetLength() const { return m_length; }

private:
    unsigned char* m_cursor;
    bool m_overflowed = false;
    std::uint32_t m_length;
    std::uint32_t m_used = 0;
};
