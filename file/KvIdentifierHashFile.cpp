// The identifier register's file form. The register itself stands in core/, which knows no files.

#include <algorithm>
#include <array>

#include "core/KvByteOrder.h"
#include "core/KvIdentifierManager.h"
#include "file/KvFieldWriter.h"
#include "file/KvFile.h"
#include "file/KvWholeFileWriter.h"

namespace {

using EError = EKvFileSystemError;

/// Reads a number of a hash file, which is little-endian unless \a swapEndian is set.
template <class T>
bool ReadNumber(CKvFile& file, bool swapEndian, T& value)
{
    const bool complete = file.Read(&value, sizeof value) == static_cast<int>(sizeof value);
    if (KvNeedsSwap(swapEndian))
        KvSwapEndian(value);
    return complete;
}

bool ReadEntry(CKvFile& file, bool swapEndian, CKvIdentifierHashEntry& entry)
{
    std::array<char, CKvIdentifierManager::kLongestFileName + 1> name = {};
    unsigned int length = 0;
    if (!ReadNumber(file, swapEndian, length) || length > CKvIdentifierManager::kLongestFileName)
        return false;
    if (file.Read(name.data(), static_cast<int>(length)) != static_cast<int>(length))
        return false;
    std::uint64_t crc = 0;
    if (!ReadNumber(file, swapEndian, crc))
        return false;
    entry = CKvIdentifierHashEntry(name.data(), crc);
    return true;
}

void WriteEntry(CKvFieldWriter& writer, const CKvIdentifierHashEntry& entry)
{
    const auto length = static_cast<unsigned int>(entry.name.GetLength());
    writer.WriteU32(length);
    writer.WriteBytes(entry.name.GetText(), length);
    writer.WriteU64(entry.crc);
}

/// Whether readers of the format have room for the entry's name.
bool Fits(const CKvIdentifierHashEntry* entry)
{
    return entry->name.GetLength() <= static_cast<int>(CKvIdentifierManager::kLongestFileName);
}

}  // namespace

void CKvIdentifierManager::LoadHashFile(const TKvString<char>& path, bool swapEndian)
{
    CKvFile file;
    if (file.Open(path, EKvFileSystemOpenMode::ReadBinary, false) != EError::Success)
        return;
    unsigned int count = 0;
    if (!ReadNumber(file, swapEndian, count))
        return;
    CKvIdentifierHashEntry entry;
    for (unsigned int i = 0; i < count && ReadEntry(file, swapEndian, entry); ++i)
        Insert(entry);
}

void CKvIdentifierManager::SaveHashFile(const TKvString<char>& path, bool swapEndian)
{
    CKvWholeFileWriter file;
    if (file.Open(path, EKvFileSystemOpenMode::WriteBinary) != EError::Success)
        return;

    CKvArray<const CKvIdentifierHashEntry*> entries;
    ListInSlotOrder(entries);
    {
        CKvFieldWriter writer(file.GetHandle(), swapEndian);
        writer.WriteU32(
            static_cast<unsigned int>(std::count_if(entries.begin(), entries.end(), Fits)));
        for (const CKvIdentifierHashEntry* entry : entries) {
            if (Fits(entry))
                WriteEntry(writer, *entry);
        }
    }
    // The call reports nothing by contract; a commit that fails leaves the old file.
    static_cast<void>(file.Commit());
}
