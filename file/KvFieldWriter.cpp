#include "file/KvFieldWriter.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr std::size_t kFileBuffer = std::size_t{64} * 1024;
constexpr std::size_t kFirstMemoryBuffer = 1024;

}  // namespace

CKvFieldWriter::CKvFieldWriter(CKvFileHandle* handle, bool bigEndian)
    : CKvFieldWriter(EDestination::File, handle, bigEndian, kFileBuffer)
{
}

CKvFieldWriter::CKvFieldWriter(EDestination destination, CKvFileHandle* handle, bool bigEndian,
                               std::size_t capacity)
    : m_destination(destination),
      m_handle(handle),
      m_swap(KvNeedsSwap(bigEndian)),
      m_capacity(capacity),
      m_buffer(std::make_unique_for_overwrite<unsigned char[]>(capacity))
{
}

CKvFieldWriter CKvFieldWriter::ToMemory(bool bigEndian)
{
    return CKvFieldWriter(EDestination::Memory, nullptr, bigEndian, kFirstMemoryBuffer);
}

CKvFieldWriter::~CKvFieldWriter()
{
    Flush();
}

/// The file gets whole buffers: a short one would pass through the stream's own buffer.
void CKvFieldWriter::AppendBeyond(const unsigned char* bytes, std::size_t size)
{
    if (m_destination == EDestination::Memory)
        Grow(m_used + size);
    while (size > 0) {
        const std::size_t piece = std::min(size, m_capacity - m_used);
        std::memcpy(m_buffer.get() + m_used, bytes, piece);
        m_used += piece;
        bytes += piece;
        size -= piece;
        if (size > 0)
            Flush();
    }
}

/// Does to one field what the file layer does to one write: each whole word of it is reversed.
void CKvFieldWriter::AppendSwapped(const unsigned char* bytes, std::size_t size)
{
    std::array<unsigned char, 256> piece = {};
    while (size > 0) {
        const std::size_t length = std::min(size, piece.size());
        std::copy_n(bytes, length, piece.begin());
        for (std::size_t i = 0; i + 4 <= length; i += 4)
            std::reverse(piece.data() + i, piece.data() + i + 4);
        Append(piece.data(), length);
        bytes += length;
        size -= length;
    }
}

void CKvFieldWriter::Grow(std::size_t minCapacity)
{
    const std::size_t capacity = std::max(minCapacity, 2 * m_capacity);
    auto larger = std::make_unique_for_overwrite<unsigned char[]>(capacity);
    std::memcpy(larger.get(), m_buffer.get(), m_used);
    m_buffer = std::move(larger);
    m_capacity = capacity;
}

/// The swap flag has been applied to what was collected, whatever it is by now.
bool CKvFieldWriter::Flush()
{
    if (m_used > 0 && m_destination == EDestination::File) {
        const int size = static_cast<int>(m_used);
        const bool swap = CKvFileSystemUnCached::GetSwapDWORDOnWrite();
        CKvFileSystemUnCached::SetSwapDWORDOnWrite(false);
        m_failed = CKvFileSystemUnCached::Write(m_handle, m_buffer.get(), size) != size || m_failed;
        CKvFileSystemUnCached::SetSwapDWORDOnWrite(swap);
        m_used = 0;
    }
    return !m_failed;
}
