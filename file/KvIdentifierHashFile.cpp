// The identifier register's file form. The register itself stands in core/, which knows no files.

#include <array>

#include "core/KvByteOrder.h"
#include "core/KvIdentifierManager.h"
#include "file/KvFile.h"
#include "file/KvWholeFileWriter.h"

namespace {

using EError = EKvFileSystemError;

/// Reads and writes the numbers of a hash file, reversed when the file is big-endian.
class CNumbers
{
public:
    explicit CNumbers(bool swapEndian) : m_swap(swapEndian) {}

    bool Read(CKvFile& file, unsigned int& value) const
    {
        return Swapped(file.ReadU32(value) == EError::Success, value);
    }

    bool Read(CKvFile& file, unsigned long long& value) const
    {
        return Swapped(file.ReadU64(value) == EError::Success, value);
    }

    template <class T>
    void Write(CKvFile& file, T value) const
    {
        Swapped(true, value);
        file.Write(&value, sizeof value);
    }

private:
    template <class T>
    bool Swapped(bool valid, T& value) const
    {
        if (m_swap)
            KvSwapEndian(value);
        return valid;
    }

    bool m_swap;
};

bool ReadEntry(CKvFile& file, const CNumbers& numbers, CKvIdentifierHashEntry& entry)
{
    std::array<char, CKvIdentifierManager::kLongestFileName + 1> name = {};
    unsigned int length = 0;
    if (!numbers.Read(file, length) || length > CKvIdentifierManager::kLongestFileName)
        return false;
    if (file.Read(name.data(), static_cast<int>(length)) != static_cast<int>(length))
        return false;
    unsigned long long crc = 0;
    if (!numbers.Read(file, crc))
        return false;
    entry = CKvIdentifierHashEntry(name.data(), crc);
    return true;
}

void WriteEntry(CKvFile& file, const CNumbers& numbers, const CKvIdentifierHashEntry& entry)
{
    const int length = entry.name.GetLength();
    numbers.Write(file, static_cast<unsigned int>(length));
    file.Write(entry.name.GetText(), length);
    numbers.Write(file, static_cast<unsigned long long>(entry.crc));
}

}  // namespace

void CKvIdentifierManager::LoadHashFile(const TKvString<char>& path, bool swapEndian)
{
    CKvFile file;
    if (file.Open(path, EKvFileSystemOpenMode::ReadBinary, false) != EError::Success)
        return;
    const CNumbers numbers(swapEndian);
    unsigned int count = 0;
    if (!numbers.Read(file, count))
        return;
    CKvIdentifierHashEntry entry;
    for (unsigned int i = 0; i < count && ReadEntry(file, numbers, entry); ++i)
        Insert(entry);
}

void CKvIdentifierManager::SaveHashFile(const TKvString<char>& path, bool swapEndian)
{
    CKvWholeFileWriter writer;
    if (writer.Open(path, EKvFileSystemOpenMode::WriteBinary) != EError::Success)
        return;

    CKvArray<const CKvIdentifierHashEntry*> entries;
    ListInSlotOrder(entries);
    const auto fits = [](const CKvIdentifierHashEntry* entry) {
        return entry->name.GetLength() <= static_cast<int>(kLongestFileName);
    };
    unsigned int count = 0;
    for (const CKvIdentifierHashEntry* entry : entries)
        count += fits(entry) ? 1u : 0u;

    const CNumbers numbers(swapEndian);
    CKvFile file(writer.GetHandle());
    numbers.Write(file, count);
    for (const CKvIdentifierHashEntry* entry : entries)
    {
        if (fits(entry))
            WriteEntry(file, numbers, *entry);
    }
    // The call reports nothing by contract; a commit that fails leaves the old file.
    static_cast<void>(writer.Commit());
}
