// Reads ranges of a disk file. Scattered ranges and large ones go straight to the caller's memory;
// small ones that follow each other, as a parser asks for them, are served from a buffer.

#pragma once

#include <cstdint>
#include <memory>

class CKvFileHandle;

class CKvReadAhead
{
public:
    /// Gives the bytes read from \a offset bytes after the start of \a file: fewer than \a size at
    /// the end of the file or after a failure. Always asked about the same file, whose bytes are
    /// assumed to stay.
    [[nodiscard]] int Read(CKvFileHandle* file, std::int64_t offset, void* buffer, int size);

    /// Forgets what was read, for another file.
    void Clear() { *this = CKvReadAhead(); }

private:
    std::unique_ptr<unsigned char[]> m_buffer;
    std::int64_t m_bufferOffset = 0;
    int m_bufferedSize = 0;

    /// Where the last read ended.
    std::int64_t m_lastEnd = -1;
};
