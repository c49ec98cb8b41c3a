// CKvMemFileReader: the cursor over an image in memory with which binary formats are read. It knows
// the image's end, so that a reader of untrusted bytes checks nothing twice.

#pragma once

#include <cstdint>
#include <cstring>

#include "core/KvString.h"

/// A value that moves through an image in the machine's byte order; copies go on from the same
/// place. Each read gives false when the image does not hold what is asked: the reader stays put,
/// the target is zeroed or emptied, and every later read fails too. A caller may thus read a whole
/// record and ask HasFailed() once.
///
/// Ownership: the image is the caller's and must outlive the reader.
class CKvMemFileReader
{
public:
    /// Units: \a size in bytes; a negative one counts as 0.
    CKvMemFileReader(const void* data, int size);

    /// Copies \a n bytes. Fails for a negative \a n.
    bool Read(void* out, int n)
    {
        if (m_failed || n < 0 || n > m_remaining)
            return Refuse(out, n);
        if (n > 0)  // an empty image may be null
            std::memcpy(out, m_cursor, static_cast<std::size_t>(n));
        m_cursor += n;
        m_remaining -= n;
        return true;
    }

    bool ReadS8(std::int8_t& out) { return Read(&out, sizeof out); }
    bool ReadU8(std::uint8_t& out) { return Read(&out, sizeof out); }
    bool ReadS16(std::int16_t& out) { return Read(&out, sizeof out); }
    bool ReadU16(std::uint16_t& out) { return Read(&out, sizeof out); }
    bool ReadS32(std::int32_t& out) { return Read(&out, sizeof out); }
    bool ReadU32(std::uint32_t& out) { return Read(&out, sizeof out); }
    bool ReadF32(float& out) { return Read(&out, sizeof out); }
    bool ReadS64(std::int64_t& out) { return Read(&out, sizeof out); }
    bool ReadU64(std::uint64_t& out) { return Read(&out, sizeof out); }

    /// Reads a text and moves past its terminator, which must lie inside the image.
    bool ReadString(TKvString<char>& out);

    /// Marks where a caller expects the image's end; has no effect.
    void ShouldBeAtEnd() const {}

    /// True once a read was refused.
    bool HasFailed() const { return m_failed; }

    /// The bytes from the cursor to the image's end.
    int GetRemaining() const { return m_remaining; }

private:
    bool Refuse(void* out, int n);

    // Fields stand in the documented order; the flag comes after them.
    const unsigned char* m_cursor;
    int m_remaining;
    bool m_failed = false;
};
