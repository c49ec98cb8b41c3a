// One member of an archive as the archive's table lists it.

#pragma once

#include <cstdint>

#include "core/KvCrc64.h"
#include "core/KvString.h"

class CKvBigFileEntry
{
public:
    CKvBigFileEntry() = default;
    CKvBigFileEntry(std::uint64_t crc, TKvString<char> name, int absolutePos, int size);

    /// Copies take all fields, the count of open handles too.
    CKvBigFileEntry(const CKvBigFileEntry&) = default;
    CKvBigFileEntry& operator=(const CKvBigFileEntry&) = default;
    CKvBigFileEntry(CKvBigFileEntry&&) noexcept = default;
    CKvBigFileEntry& operator=(CKvBigFileEntry&&) noexcept = default;
    virtual ~CKvBigFileEntry();

    std::uint64_t GetCRC64() const { return m_crc; }

    /// The name as the archive stores it.
    const TKvString<char>& GetFileName() const { return m_name; }

    /// The registered text of the CRC, or "CRC<0123456789ABCDEF>" when there is none.
    TKvString<char> GetName() const;

    /// Bytes of data. Negative where an archive claims 2 GiB or more, which nothing serves.
    int GetSize() const { return m_size; }

    /// Where the data begins: bytes from the start of the archive in an archive that was opened,
    /// from the byte after its first field in one that is being generated. Negative as GetSize().
    int GetAbsolutePos() const { return m_absolutePos; }

    /// How many handles are open on the member.
    int GetOpenCount() const { return m_openCount; }

private:
    friend class CKvBigFile;
    friend class CKvBigFileGenerator;
    friend class CKvFileHandleBigFile;

    // In the documented order.
    std::uint64_t m_crc = kKvCrc64Initial;
    TKvString<char> m_name;
    int m_absolutePos = 0;
    int m_openCount = 0;
    int m_size = 0;
};
