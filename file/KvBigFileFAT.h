// The table of an archive's members, in memory and as the archive stores it. Nothing in the stored
// form tells that it is one, so the reader takes no number in it on trust.

#pragma once

#include <cstdint>
#include <vector>

#include "core/KvArray.h"
#include "file/KvBigFileEntry.h"

class CKvFile;

class CKvBigFileFAT
{
public:
    /// The longest name of a member, in bytes without terminator.
    static constexpr int kLongestName = 4095;

    /// The stored record of a member without name: CRC, terminator, offset and size, in bytes.
    static constexpr int kSmallestRecord = 17;

    CKvBigFileFAT() = default;
    CKvBigFileFAT(const CKvBigFileFAT&) = default;
    CKvBigFileFAT& operator=(const CKvBigFileFAT&) = default;
    virtual ~CKvBigFileFAT();

    int GetEntryCount() const { return m_entries.GetCount(); }

    /// The entry at \a index, valid until the next AddEntry(); null when there is none.
    CKvBigFileEntry* GetEntry(int index);
    const CKvBigFileEntry* GetEntry(int index) const;

    /// Appends a copy.
    void AddEntry(const CKvBigFileEntry& entry);

    /// The first entry with this CRC, valid until the next AddEntry(); null when there is none.
    ///
    /// Cost: constant, after entries that were added since the last search have been indexed.
    CKvBigFileEntry* FindEntry(std::uint64_t crc);

    /// The bytes that the table takes behind the archive's first field.
    std::int64_t ComputeSerialSize() const;

    /// Writes the table at the file's position, which must be its start. Positions are stored
    /// raised by the size of the first field, as a generator's need it.
    ///
    /// \a swapEndian writes all numbers big-endian.
    /// Errors: false when a write fails or the table is too large for its first field.
    [[nodiscard]] bool SerialTo(CKvFile& file, bool swapEndian) const;

    /// Replaces the entries by those of a table at the file's position.
    ///
    /// Errors: false, and the entries as they were, when the file ends before the table does, when
    ///         the table promises more records than it holds or has a name above kLongestName, and
    ///         when memory is short. Where members lie is not looked at.
    /// Cost:   memory in proportion to the bytes that the table really has.
    [[nodiscard]] bool SerialFrom(CKvFile& file);

private:
    void UpdateIndex();

    CKvArray<CKvBigFileEntry> m_entries;

    /// The slot of the first entry with this CRC, or the empty slot where it belongs.
    int& Slot(std::uint64_t crc);

    /// Open addressing with linear probing over the first m_indexedCount entries, at most half
    /// full: indices of entries that are the first of their CRC, -1 in empty slots. Indices, since
    /// entries move when the array grows.
    std::vector<int> m_slots;
    int m_indexedCount = 0;
};
