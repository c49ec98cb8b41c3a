// Makes archives out of files on disk.

#pragma once

#include <cstdint>

#include "core/KvArray.h"
#include "core/KvString.h"
#include "file/KvBigFileFAT.h"

class CKvFile;

/// Collects the members, then saves as often as asked.
class CKvBigFileGenerator
{
public:
    CKvBigFileGenerator() = default;
    CKvBigFileGenerator(const CKvBigFileGenerator&) = delete;
    CKvBigFileGenerator& operator=(const CKvBigFileGenerator&) = delete;
    virtual ~CKvBigFileGenerator();

    /// Adds the file at \a sourcePath as the next member. Readers find it by name only when \a crc
    /// is CreateCrc64_ToLower() of the stored name; of several members with one CRC they find the
    /// first.
    ///
    /// Errors: false, and nothing added, when the source cannot be opened or measured, the name is
    ///         above CKvBigFileFAT::kLongestName bytes, the archive would exceed INT_MAX bytes, or
    ///         memory is short.
    /// Cost:   independent of the number of members.
    [[nodiscard]] bool AddFile(const TKvString<char>& sourcePath, const TKvString<char>& storedName,
                               std::uint64_t crc);

    /// Writes the archive, or its table alone when \a headerOnly, which looks at no source.
    ///
    /// \a swapEndian writes all numbers of the table big-endian; members are copied as they are.
    /// Errors: false when a source cannot be opened any more or has not the size it had when added,
    ///         a read or write fails or memory is short. The file at \a path is then as it was; see
    ///         CKvWholeFileWriter.
    [[nodiscard]] bool Save(const TKvString<char>& path, bool swapEndian, bool headerOnly);

protected:
    /// Lays the members out, one behind the other, after the table.
    void UpdateAbsolutePos();

private:
    bool AllSourcesAreAsAdded() const;
    bool CopySources(CKvFile& archive) const;

    // The first three in the documented order.
    CKvBigFileFAT m_fat;
    CKvArray<TKvString<char>> m_sourcePaths;
    CKvArray<int> m_sourceSizes;

    /// What the archive comes to with all members, in bytes; empty, it is a table of no records.
    std::int64_t m_archiveSize = 8;
};
