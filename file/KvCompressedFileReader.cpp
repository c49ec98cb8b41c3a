#include "file/KvCompressedFileReader.h"

#include <algorithm>
#include <climits>
#include <new>
#include <utility>

#include "core/KvOutOfMemory.h"
#include "file/KvFile.h"
#include "file/KvFileSystemUnCached.h"

namespace {

/// What must be there for a file to be a compressed one.
constexpr int kPrologSize = kKvCompressedHeaderSize + kKvLzmaPropertiesSize;

CKvLzmaProgress Copy(std::span<const unsigned char> from, std::span<unsigned char> to)
{
    const std::size_t size = std::min(from.size(), to.size());
    std::copy_n(from.data(), size, to.data());
    return {size, size};
}

}  // namespace

CKvCompressedFileReader::CKvCompressedFileReader(CKvFile* file, int& size)
    : m_file(file), m_buffers(new (std::nothrow) CBuffer[2])
{
    if (m_buffers == nullptr)
        KvNoteOutOfMemory();
    m_isRefused = !Begin();
    if (m_isRefused)
        m_fileLeft = m_outputSize = 0;
    m_outputLeft = m_outputSize;
    size = m_outputSize;
}

CKvCompressedFileReader::~CKvCompressedFileReader()
{
    if (m_inFlight != nullptr)
        m_file->AsyncWait();
}

bool CKvCompressedFileReader::Begin()
{
    if (m_buffers == nullptr ||
        !CKvFileSystemUnCached::MeasureWhole(m_file->GetHandle(), m_fileLeft))
        return false;
    CBuffer& first = m_buffers[0];
    const int expected = std::min(kPrologSize, m_fileLeft);
    if (m_file->AsyncRead(first.data.data(), expected) != EKvFileSystemError::Success)
        return false;
    m_outputSize = std::exchange(m_fileLeft, m_fileLeft - expected);
    if (expected == kPrologSize && KvIsCompressed(first.data.data(), kPrologSize)) {
        std::copy_n(first.data.begin(), m_header.size(), m_header.begin());
        m_free = {&first, &m_buffers[1]};
        if (!BeginCompressed(first.data.data() + m_header.size()))
            return false;
    } else {
        first.consumed = 0;
        first.valid = static_cast<std::size_t>(expected);
        m_ready = &first;
        m_free = {&m_buffers[1]};
    }
    StartRead();
    return true;
}

bool CKvCompressedFileReader::BeginCompressed(const unsigned char* properties)
{
    m_isCompressed = true;
    const std::uint32_t size = KvGetUncompressedSize(m_header.data());
    if (size > INT_MAX)
        return false;
    m_outputSize = static_cast<int>(size);
    return m_decoder.Begin(properties, static_cast<std::uint64_t>(m_fileLeft), size);
}

int CKvCompressedFileReader::Read(void* out, int count)
{
    const int wanted = std::min(count, m_outputLeft);
    int delivered = 0;
    while (delivered < wanted) {
        const CKvLzmaProgress step = Serve({static_cast<unsigned char*>(out) + delivered,
                                            static_cast<std::size_t>(wanted - delivered)});
        if (step.IsNone())
            break;
        delivered += static_cast<int>(step.produced);
    }
    m_outputLeft -= delivered;
    return delivered;
}

void CKvCompressedFileReader::SeekFromStart(int pos)
{
    std::array<unsigned char, 256> dropped;
    while (pos > m_outputSize - m_outputLeft) {
        const int distance = pos - (m_outputSize - m_outputLeft);
        if (Read(dropped.data(), std::min<int>(distance, dropped.size())) == 0)
            return;
    }
}

void CKvCompressedFileReader::StartRead()
{
    CBuffer*& slot = m_free[0] != nullptr ? m_free[0] : m_free[1];
    if (m_fileLeft == 0 || m_inFlight != nullptr || slot == nullptr)
        return;
    const int size = std::min(m_fileLeft, kBufferSize);
    if (m_file->AsyncRead(slot->data.data(), size) != EKvFileSystemError::Success) {
        m_fileLeft = 0;  // reading on would leave out what this read has taken
        return;
    }
    slot->consumed = 0;
    slot->valid = static_cast<std::size_t>(size);
    m_inFlight = std::exchange(slot, nullptr);
    m_fileLeft -= size;
}

void CKvCompressedFileReader::FinishRead()
{
    if (m_inFlight == nullptr)
        return;
    m_file->AsyncWait();
    m_ready = std::exchange(m_inFlight, nullptr);
    StartRead();
}

CKvLzmaProgress CKvCompressedFileReader::Serve(std::span<unsigned char> out)
{
    if (m_ready == nullptr)
        FinishRead();
    // Without input the decoder still has the last bytes to give.
    const std::span<const unsigned char> input =
        m_ready != nullptr ? m_ready->Unconsumed() : std::span<const unsigned char>();
    const CKvLzmaProgress step = m_isCompressed ? m_decoder.Decode(input, out) : Copy(input, out);
    if (m_ready != nullptr) {
        m_ready->consumed += step.consumed;
        if (m_ready->Unconsumed().empty()) {
            (m_free[0] == nullptr ? m_free[0] : m_free[1]) = std::exchange(m_ready, nullptr);
            StartRead();
        }
    }
    return step;
}
