#include "file/KvReadAhead.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "file/KvFileSystemUnCached.h"

namespace {

constexpr int kBufferSize = 8192;

/// From here on a read is worth a call of the system by itself.
constexpr int kLargeRead = kBufferSize / 2;

}  // namespace

int CKvReadAhead::Read(CKvFileHandle* file, std::int64_t offset, void* buffer, int size)
{
    const bool isSequential = offset == m_lastEnd;
    m_lastEnd = offset + size;
    const bool isBuffered =
        offset >= m_bufferOffset && m_lastEnd <= m_bufferOffset + m_bufferedSize;
    if (!isBuffered) {
        if (m_buffer == nullptr && isSequential)
            m_buffer.reset(new (std::nothrow) unsigned char[kBufferSize]);
        if (m_buffer == nullptr || !isSequential || size >= kLargeRead)
            return CKvFileSystemUnCached::ReadAt(file, offset, buffer, size);
        m_bufferOffset = offset;
        m_bufferedSize = CKvFileSystemUnCached::ReadAt(file, offset, m_buffer.get(), kBufferSize);
    }
    const auto start = static_cast<int>(offset - m_bufferOffset);
    const int count = std::min(size, m_bufferedSize - start);
    std::memcpy(buffer, m_buffer.get() + start, static_cast<std::size_t>(count));
    return count;
}
