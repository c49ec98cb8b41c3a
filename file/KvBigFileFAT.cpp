#include "file/KvBigFileFAT.h"

#include <algorithm>
#include <bit>
#include <memory>
#include <utility>

#include "core/KvOutOfMemory.h"
#include "core/KvSaltedHash.h"
#include "file/KvFieldWriter.h"
#include "file/KvFile.h"
#include "serial/KvMemFileReader.h"

namespace {

/// The first field, whose value counts the bytes between itself and the first member's data.
constexpr int kTableSizeField = sizeof(std::uint32_t);

/// The count of records, with which the table proper begins.
constexpr int kCountField = sizeof(std::int32_t);

constexpr int kSmallestRecord = CKvBigFileFAT::kSmallestRecord;
constexpr int kLargestRecord = kSmallestRecord + CKvBigFileFAT::kLongestName;

bool ReadEntry(CKvMemFileReader& reader, CKvBigFileEntry& entry)
{
    std::uint64_t crc = 0;
    TKvString<char> name;
    std::int32_t offset = 0;
    std::int32_t size = 0;
    const int before = reader.GetRemaining();
    reader.ReadU64(crc);
    reader.ReadString(name);
    reader.ReadS32(offset);
    reader.ReadS32(size);
    entry = CKvBigFileEntry(crc, std::move(name), offset, size);
    return !reader.HasFailed() && before - reader.GetRemaining() <= kLargestRecord;
}

void WriteEntry(CKvFieldWriter& writer, const CKvBigFileEntry& entry)
{
    writer.WriteU64(entry.GetCRC64());
    writer.WriteText(entry.GetFileName());
    writer.WriteU32(static_cast<std::uint32_t>(entry.GetAbsolutePos()) + kTableSizeField);
    writer.WriteS32(entry.GetSize());
}

/// Reads the two numbers before the records. False when they cannot be true of this file.
bool ReadCounts(CKvFile& file, std::int64_t& recordBytes, std::int32_t& count)
{
    const std::int64_t fileBytes = std::int64_t{file.GetSize()} - file.GetPos();
    unsigned int tableSize = 0;
    if (file.ReadU32(tableSize) != EKvFileSystemError::Success ||
        file.ReadS32(count) != EKvFileSystemError::Success)
        return false;
    recordBytes = std::int64_t{tableSize} - kCountField;
    return recordBytes >= 0 && recordBytes <= fileBytes - kTableSizeField - kCountField &&
           count <= recordBytes / kSmallestRecord;
}

/// Reads the records in one piece. The file has so many bytes, and a count that is small promises
/// little, so that no size is taken on trust.
bool ReadRecords(CKvFile& file, std::int64_t recordBytes, int count,
                 CKvArray<CKvBigFileEntry>& entries)
{
    const auto blockSize =
        static_cast<int>(std::min(recordBytes, std::int64_t{count} * kLargestRecord));
    const auto block =
        std::make_unique_for_overwrite<unsigned char[]>(static_cast<std::size_t>(blockSize));
    if (file.Read(block.get(), blockSize) != blockSize)
        return false;
    CKvMemFileReader reader(block.get(), blockSize);
    entries.SetGrowthStep(count);
    for (int i = 0; i < count; ++i) {
        CKvBigFileEntry entry;
        if (!ReadEntry(reader, entry))
            return false;
        entries.Add(std::move(entry));
    }
    entries.SetGrowthStep(CKvArray<CKvBigFileEntry>::kDefaultGrowthStep);
    return true;
}

}  // namespace

CKvBigFileFAT::~CKvBigFileFAT() = default;

CKvBigFileEntry* CKvBigFileFAT::GetEntry(int index)
{
    return index >= 0 && index < m_entries.GetCount() ? &m_entries[index] : nullptr;
}

const CKvBigFileEntry* CKvBigFileFAT::GetEntry(int index) const
{
    return index >= 0 && index < m_entries.GetCount() ? &m_entries[index] : nullptr;
}

void CKvBigFileFAT::AddEntry(const CKvBigFileEntry& entry)
{
    m_entries.Add(entry);
}

CKvBigFileEntry* CKvBigFileFAT::FindEntry(std::uint64_t crc)
{
    UpdateIndex();
    return m_indexedCount > 0 ? GetEntry(Slot(crc)) : nullptr;
}

std::int64_t CKvBigFileFAT::ComputeSerialSize() const
{
    std::int64_t size = kCountField;
    for (const CKvBigFileEntry& entry : m_entries)
        size += kSmallestRecord + entry.GetFileName().GetLength();
    return size;
}

bool CKvBigFileFAT::SerialTo(CKvFile& file, bool swapEndian) const
{
    const std::int64_t tableSize = ComputeSerialSize();
    return tableSize <= UINT32_MAX && KvFalseWhenOutOfMemory([&] {
               CKvFieldWriter writer(file.GetHandle(), swapEndian);
               writer.WriteU32(static_cast<std::uint32_t>(tableSize));
               writer.WriteS32(m_entries.GetCount());
               for (const CKvBigFileEntry& entry : m_entries)
                   WriteEntry(writer, entry);
               return writer.Flush();
           });
}

bool CKvBigFileFAT::SerialFrom(CKvFile& file)
{
    return KvFalseWhenOutOfMemory([&] {
        std::int64_t recordBytes = 0;
        std::int32_t count = 0;
        CKvBigFileFAT read;
        if (!ReadCounts(file, recordBytes, count))
            return false;
        if (count > 0 && !ReadRecords(file, recordBytes, count, read.m_entries))
            return false;
        read.UpdateIndex();
        std::swap(m_entries, read.m_entries);
        std::swap(m_slots, read.m_slots);
        m_indexedCount = read.m_indexedCount;
        return true;
    });
}

void CKvBigFileFAT::UpdateIndex()
{
    const int count = m_entries.GetCount();
    if (m_indexedCount == count)
        return;
    if (m_slots.size() < 2 * static_cast<std::size_t>(count)) {
        m_slots.assign(std::bit_ceil(2 * static_cast<std::size_t>(count)), -1);
        m_indexedCount = 0;
    }
    for (; m_indexedCount < count; ++m_indexedCount) {
        int& slot = Slot(m_entries[m_indexedCount].GetCRC64());
        if (slot < 0)
            slot = m_indexedCount;
    }
}

/// Salted, since names whose CRCs share their low bits are easy to construct.
int& CKvBigFileFAT::Slot(std::uint64_t crc)
{
    std::size_t slot = KvSaltedHash(crc) & (m_slots.size() - 1);
    while (m_slots[slot] >= 0 && m_entries[m_slots[slot]].GetCRC64() != crc)
        slot = (slot + 1) & (m_slots.size() - 1);
    return m_slots[slot];
}
