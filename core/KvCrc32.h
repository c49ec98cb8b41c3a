// CKvCRC32: the reflected 32-bit CRC. With the default polynomial it is that of IEEE 802.3,
// clause 3.2.9.

#pragma once

#include "core/KvCrcTable.h"

/// A running checksum: several CrcAdd() calls over consecutive pieces give the same as one over the
/// whole. Fields stand in the documented order: table (owned, active), running value.
class CKvCRC32
{
public:
    static constexpr unsigned int kDefaultPolynomial = 0xEDB88320;

    CKvCRC32() : CKvCRC32(kDefaultPolynomial) {}
    explicit CKvCRC32(unsigned int polynomial) { CrcInitialize(polynomial); }
    CKvCRC32(const CKvCRC32&) = default;
    CKvCRC32& operator=(const CKvCRC32&) = default;
    virtual ~CKvCRC32() = default;

    /// Starts anew with another polynomial. Any but the default one costs a table of 256 entries,
    /// which the object keeps until it is destroyed.
    void CrcInitialize(unsigned int polynomial);

    /// Feeds \a size bytes and gives the checksum so far.
    ///
    /// Errors: 0 when \a data is null; the checksum so far is kept.
    unsigned int CrcAdd(const void* data, unsigned int size);

    /// Starts anew with the same polynomial.
    void CrcReset() { m_value = kInitialValue; }

    /// The checksum so far.
    unsigned int CrcGet() const { return static_cast<unsigned int>(~m_value); }

    bool operator==(unsigned int checksum) const { return CrcGet() == checksum; }

protected:
    /// The table of the default polynomial, shared by all objects.
    static const TKvCrcEntries<unsigned int> ms_pCRC32;

    /// Entry \a i (0 to 255) of the table in use.
    unsigned int CrcTableIndex(int i) const { return m_table.Entry(i); }

private:
    static constexpr unsigned int kInitialValue = 0xFFFFFFFF;

    TKvCrcTable<unsigned int> m_table;
    unsigned int m_value = kInitialValue;  // uncomplemented
};

/// The CRC-32 of IEEE 802.3 over \a size bytes in one call, as the bits of an int. 0 when \a size
/// is 0 or less.
int CreateCRC32(const unsigned char* data, int size);
