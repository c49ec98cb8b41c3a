#include "file/KvFileHandleCached.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <new>
#include <utility>

#include "file/KvFileSystemUnCached.h"

using FileSystem = CKvFileSystemUnCached;
using EError = EKvFileSystemError;
using EMode = EKvFileSystemOpenMode;

namespace {

constexpr int kUnknown = -1;

/// Buffers begin at a cache line.
constexpr std::size_t kAlignment = 64;

}  // namespace

bool CKvFileHandleCached::SCache::Holds(int filePosition) const
{
    // The end counts too: reading on from there needs no other cache.
    return filePosition >= position - offset && filePosition <= WindowEnd();
}

void CKvFileHandleCached::SCache::MoveTo(int filePosition)
{
    const bool stays = Holds(filePosition);
    offset = stays ? offset + (filePosition - position) : 0;
    unread = stays ? unread - (filePosition - position) : 0;
    position = filePosition;
}

int CKvFileHandleCached::SCache::Take(char* out, int size)
{
    const int taken = std::min(size, unread);
    if (taken > 0)
        std::memcpy(out, aligned + offset, static_cast<std::size_t>(taken));
    MoveTo(position + taken);
    return taken;
}

bool CKvFileHandleCached::SCache::Allocate()
{
    std::size_t space = kDefaultCapacity + kAlignment;
    if (raw == nullptr)
        raw.reset(std::malloc(space));
    void* start = raw.get();
    if (start != nullptr)
        aligned = static_cast<char*>(std::align(kAlignment, kDefaultCapacity, start, space));
    return start != nullptr;
}

CKvFileHandleCached::CKvFileHandleCached(const TKvString<char>& path, EMode mode, int)
    : m_name(path), m_openMode(mode)
{
}

CKvFileHandleCached::~CKvFileHandleCached()
{
    Close();
}

EError CKvFileHandleCached::Open(const TKvString<char>& path, EMode mode, bool useBigFiles)
{
    if (m_file != nullptr)
        return EError::AlreadyOpen;
    m_name = path;
    m_openMode = mode;
    const EError error = FileSystem::Open(m_file, path, mode, useBigFiles);
    if (error != EError::Success)
        return error;
    const bool reads = mode == EMode::ReadBinary || mode == EMode::ReadText;
    if (!reads)
        m_size = FileSystem::GetSize(m_file);
    if (!reads || PrepareReading())
        return EError::Success;
    Close();
    return EError::ReadFailed;
}

bool CKvFileHandleCached::PrepareReading()
{
    if (!FileSystem::MeasureWhole(m_file, m_size))
        return false;
    m_sourcePosition = 0;
    if (m_size < kKvCompressedHeaderSize + kKvLzmaPropertiesSize)
        return true;  // too short for a compressed file
    if (ReadAt(0, m_header.data(), kKvCompressedHeaderSize) < kKvCompressedHeaderSize)
        return false;
    return !KvIsCompressed(m_header.data(), kKvCompressedHeaderSize) || PrepareDecompression();
}

/// Takes the compressed block into memory; from then on it is the source.
bool CKvFileHandleCached::PrepareDecompression()
{
    const std::uint32_t size = KvGetUncompressedSize(m_header.data());
    m_compressedSize = m_size - kKvCompressedHeaderSize;
    if (size > INT_MAX)
        return false;
    std::unique_ptr<char[]> block(
        new (std::nothrow) char[static_cast<std::size_t>(m_compressedSize)]);
    if (block == nullptr ||
        ReadAt(kKvCompressedHeaderSize, block.get(), m_compressedSize) < m_compressedSize)
        return false;
    m_compressed = std::move(block);
    m_size = static_cast<int>(size);
    m_sourcePosition = kUnknown;
    return MoveSourceTo(0);
}

int CKvFileHandleCached::Read(void* buffer, int size)
{
    if (m_file == nullptr || size < 1)
        return 0;
    SCache& cache = m_caches[m_current];
    cache.lastUse = ++m_useCounter;
    char* out = static_cast<char*>(buffer);
    const int start = cache.position;
    const int taken = cache.Take(out, size);
    const int wanted = size - taken;
    const int available = std::min(wanted, m_size - cache.position);
    if (available == 0)
        return taken;
    if (wanted >= cache.capacity) {
        const int read = ReadAt(cache.position, out + taken, available);
        cache.MoveTo(cache.position + read);
        return taken + read;
    }
    if (!Fill(cache)) {
        cache.MoveTo(start);
        return kReadFailed;
    }
    return taken + cache.Take(out + taken, available);
}

int CKvFileHandleCached::Write(const void* data, int size)
{
    m_sourcePosition = kUnknown;
    return FileSystem::Write(m_file, data, size);
}

bool CKvFileHandleCached::SeekStart(int bytes, int)
{
    if (m_file == nullptr)
        return false;
    const int target = std::clamp(bytes, 0, m_size);
    m_current = ChooseCache(target);
    m_caches[m_current].MoveTo(target);
    return true;
}

bool CKvFileHandleCached::SeekCurrent(int bytes, int)
{
    if (m_file == nullptr)
        return false;
    const std::int64_t target = std::int64_t{FilePos()} + bytes;
    m_caches[m_current].MoveTo(static_cast<int>(std::clamp<std::int64_t>(target, 0, m_size)));
    return true;
}

EError CKvFileHandleCached::Close()
{
    if (m_file == nullptr)
        return EError::CloseFailed;
    for (SCache& cache : m_caches) {
        cache.position = cache.offset = cache.unread = 0;
        cache.lastUse = 0;
    }
    m_decompressor.Release();
    m_compressed.reset();
    m_compressedSize = 0;
    m_size = 0;
    m_current = 0;
    m_useCounter = 0;
    m_sourcePosition = kUnknown;
    return FileSystem::Close(m_file);
}

void CKvFileHandleCached::SetCacheSize(int sizeBytes, int cacheIndex)
{
    if (cacheIndex < 0 || cacheIndex >= kCacheCount)
        return;
    const bool fits = sizeBytes > 0 && sizeBytes < kDefaultCapacity;
    m_caches[static_cast<std::size_t>(cacheIndex)].capacity = fits ? sizeBytes : kDefaultCapacity;
}

/// The cache whose window holds most bytes from the position on; if none holds it, the one that was
/// read through least recently, or never.
std::size_t CKvFileHandleCached::ChooseCache(int filePosition) const
{
    const SCache* best = nullptr;
    for (const SCache& cache : m_caches)
        if (cache.Holds(filePosition) && (best == nullptr || cache.WindowEnd() > best->WindowEnd()))
            best = &cache;
    if (best == nullptr)
        best = std::min_element(
            m_caches.begin(), m_caches.end(),
            [](const SCache& a, const SCache& b) { return a.lastUse < b.lastUse; });
    return static_cast<std::size_t>(best - m_caches.data());
}

/// Fills the cache's buffer from its position on. It is empty after a failure.
bool CKvFileHandleCached::Fill(SCache& cache)
{
    if (!cache.Allocate())
        return false;
    const int wanted = std::min(cache.capacity, m_size - cache.position);
    const int read = ReadAt(cache.position, cache.aligned, wanted);
    cache.offset = 0;
    cache.unread = read == wanted ? wanted : 0;
    return read == wanted;
}

/// Gives the bytes read, fewer than \a size after a failure.
int CKvFileHandleCached::ReadAt(int filePosition, char* out, int size)
{
    if (filePosition != m_sourcePosition && !MoveSourceTo(filePosition))
        return 0;
    return ReadSource(out, size);
}

bool CKvFileHandleCached::MoveSourceTo(int filePosition)
{
    if (m_compressed == nullptr) {
        // The result does not tell whether the stream moved; where it stands does.
        FileSystem::SeekFromStart(m_file, filePosition);
        m_sourcePosition = FileSystem::GetPos(m_file);
        return m_sourcePosition == filePosition;
    }
    // A decompressor knows no way back, and forwards only the one through all bytes between.
    if (m_sourcePosition == kUnknown || m_sourcePosition > filePosition)
        m_sourcePosition =
            m_decompressor.Initialize(m_compressed.get(), m_compressedSize, m_size) ? 0 : kUnknown;
    std::array<char, 4096> skipped;
    while (m_sourcePosition != kUnknown && m_sourcePosition < filePosition)
        ReadSource(skipped.data(),
                   std::min(static_cast<int>(skipped.size()), filePosition - m_sourcePosition));
    return m_sourcePosition == filePosition;
}

/// Reads where the source stands, which is unknown after a failure. A file gives all bytes or none:
/// Read() would give zeros for those that an archive has lost.
int CKvFileHandleCached::ReadSource(char* out, int size)
{
    int read = 0;
    if (m_compressed != nullptr)
        read = m_decompressor.DecompressOutputBytes(out, size);
    else if (FileSystem::AsyncRead(m_file, out, size) == EError::Success)
        read = size;
    m_sourcePosition = read == size ? m_sourcePosition + read : kUnknown;
    return read;
}
