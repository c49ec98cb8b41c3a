#include "file/KvFieldWriter.h"

#include <bit>
#include <cstring>

#include "core/KvByteOrder.h"
#include "file/KvFileSystemUnCached.h"

namespace {

constexpr std::size_t kBufferSize = std::size_t{64} * 1024;

}  // namespace

CKvFieldWriter::CKvFieldWriter(CKvFileHandle* handle, bool bigEndian)
    : m_handle(handle),
      m_swap(KvNeedsSwap(bigEndian)),
      m_buffer(std::make_unique_for_overwrite<unsigned char[]>(kBufferSize))
{
}

CKvFieldWriter::~CKvFieldWriter()
{
    Flush();
}

void CKvFieldWriter::WriteU32(std::uint32_t value)
{
    if (m_swap)
        KvSwapEndian(value);
    WriteField(&value, sizeof value);
}

void CKvFieldWriter::WriteU64(std::uint64_t value)
{
    if (m_swap)
        KvSwapEndian(value);
    WriteField(&value, sizeof value);
}

void CKvFieldWriter::WriteS32(std::int32_t value)
{
    WriteU32(static_cast<std::uint32_t>(value));
}

void CKvFieldWriter::WriteF32(float value)
{
    WriteU32(std::bit_cast<std::uint32_t>(value));
}

void CKvFieldWriter::WriteBytes(const char* bytes, std::size_t size)
{
    WriteField(bytes, size);
}

void CKvFieldWriter::WriteText(const TKvString<char>& text)
{
    WriteField(text.GetText(), static_cast<std::size_t>(text.GetLength()));
    WriteField("", 1);
}

/// The file layer's swap flag works on each write by itself, so under it no field is collected.
void CKvFieldWriter::WriteField(const void* bytes, std::size_t size)
{
    const bool direct = size > kBufferSize || CKvFileSystemUnCached::GetSwapDWORDOnWrite();
    if (direct || size > kBufferSize - m_used)
        Flush();
    if (direct) {
        Write(bytes, size);
        return;
    }
    std::memcpy(m_buffer.get() + m_used, bytes, size);
    m_used += size;
}

void CKvFieldWriter::Write(const void* bytes, std::size_t size)
{
    const int written = CKvFileSystemUnCached::Write(m_handle, bytes, static_cast<int>(size));
    m_failed = m_failed || written != static_cast<int>(size);
}

/// Fields were collected while the swap flag was clear, whatever it is by now.
bool CKvFieldWriter::Flush()
{
    const bool swap = CKvFileSystemUnCached::GetSwapDWORDOnWrite();
    CKvFileSystemUnCached::SetSwapDWORDOnWrite(false);
    Write(m_buffer.get(), m_used);
    CKvFileSystemUnCached::SetSwapDWORDOnWrite(swap);
    m_used = 0;
    return !m_failed;
}
