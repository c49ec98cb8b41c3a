#include "file/KvBigFileGenerator.h"

#include <climits>
#include <memory>

#include "core/KvOutOfMemory.h"
#include "file/KvFile.h"
#include "file/KvFileSystemUnCached.h"
#include "file/KvWholeFileWriter.h"

using EError = EKvFileSystemError;
using EMode = EKvFileSystemOpenMode;

namespace {

/// Pieces in which sources are copied. A multiple of 4, so that the file layer's swap flag, which
/// works on each write by itself, does to a member what it does to one write of all its bytes.
constexpr int kCopyBufferSize = 64 * 1024;

/// The size of a source; false when it cannot be opened or has no size that an int can hold.
bool MeasureSource(const TKvString<char>& path, int& size)
{
    CKvFile source;
    return source.Open(path, EMode::ReadBinary, false) == EError::Success &&
           CKvFileSystemUnCached::MeasureWhole(source.GetHandle(), size);
}

/// Copies a source that must have \a size bytes.
bool CopySource(const TKvString<char>& path, int size, unsigned char* buffer, CKvFile& archive)
{
    CKvFile source;
    if (source.Open(path, EMode::ReadBinary, false) != EError::Success)
        return false;
    std::int64_t left = size;
    while (const int count = source.Read(buffer, kCopyBufferSize)) {
        left -= count;
        if (left < 0 || archive.Write(buffer, count) != count)
            return false;
    }
    return left == 0;
}

}  // namespace

CKvBigFileGenerator::~CKvBigFileGenerator() = default;

bool CKvBigFileGenerator::AddFile(const TKvString<char>& sourcePath,
                                  const TKvString<char>& storedName, std::uint64_t crc)
{
    const int nameLength = storedName.GetLength();
    int size = 0;
    if (nameLength > CKvBigFileFAT::kLongestName || !MeasureSource(sourcePath, size))
        return false;
    const std::int64_t archiveSize =
        m_archiveSize + CKvBigFileFAT::kSmallestRecord + nameLength + size;
    if (archiveSize > INT_MAX)
        return false;
    const bool added = KvFalseWhenOutOfMemory([&] {
        m_sourcePaths.Add(sourcePath);
        m_sourceSizes.Add(size);
        m_fat.AddEntry(CKvBigFileEntry(crc, storedName, 0, size));
        m_archiveSize = archiveSize;
        return true;
    });
    if (m_sourcePaths.GetCount() > m_fat.GetEntryCount())
        m_sourcePaths.RemoveLast();
    if (m_sourceSizes.GetCount() > m_fat.GetEntryCount())
        m_sourceSizes.RemoveLast();
    return added;
}

bool CKvBigFileGenerator::Save(const TKvString<char>& path, bool swapEndian, bool headerOnly)
{
    return KvFalseWhenOutOfMemory([&] {
        if (!headerOnly && !AllSourcesAreAsAdded())
            return false;
        CKvWholeFileWriter writer;
        if (writer.Open(path, EMode::WriteBinary) != EError::Success)
            return false;
        CKvFile archive(writer.GetHandle());
        UpdateAbsolutePos();
        return m_fat.SerialTo(archive, swapEndian) && (headerOnly || CopySources(archive)) &&
               writer.Commit() == EError::Success;
    });
}

void CKvBigFileGenerator::UpdateAbsolutePos()
{
    auto position = static_cast<int>(m_fat.ComputeSerialSize());
    for (int i = 0; i < m_fat.GetEntryCount(); ++i) {
        CKvBigFileEntry* entry = m_fat.GetEntry(i);
        entry->m_absolutePos = position;
        position += entry->GetSize();
    }
}

/// Asked before anything is written: some targets can only be written in place.
bool CKvBigFileGenerator::AllSourcesAreAsAdded() const
{
    for (int i = 0; i < m_sourcePaths.GetCount(); ++i) {
        int size = 0;
        if (!MeasureSource(m_sourcePaths[i], size) || size != m_sourceSizes[i])
            return false;
    }
    return true;
}

bool CKvBigFileGenerator::CopySources(CKvFile& archive) const
{
    const auto buffer = std::make_unique_for_overwrite<unsigned char[]>(kCopyBufferSize);
    for (int i = 0; i < m_sourcePaths.GetCount(); ++i) {
        if (!CopySource(m_sourcePaths[i], m_sourceSizes[i], buffer.get(), archive))
            return false;
    }
    return true;
}
