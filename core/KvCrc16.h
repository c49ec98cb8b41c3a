// CKvCRC16: a 16-bit checksum. Its table is built most significant bit first, its step takes the
// low byte first: the values are its own, not those of a published CRC with the same polynomial.

#pragma once

#include "core/KvCrcTable.h"

/// A running checksum: several CrcAdd() calls over consecutive pieces give the same as one over the
/// whole. Fields stand in the documented order: table (owned, active), running value.
class CKvCRC16
{
public:
    static constexpr unsigned short kDefaultPolynomial = 0x1021;

    CKvCRC16() : CKvCRC16(kDefaultPolynomial) {}
    explicit CKvCRC16(unsigned short polynomial) { CrcInitialize(polynomial); }
    CKvCRC16(const CKvCRC16&) = default;
    CKvCRC16& operator=(const CKvCRC16&) = default;
    virtual ~CKvCRC16() = default;

    /// Starts anew with another polynomial. Any but the default one costs a table of 256 entries,
    /// which the object keeps until it is destroyed.
    void CrcInitialize(unsigned short polynomial);

    /// Feeds \a size bytes and gives the checksum so far.
    ///
    /// Errors: 0 when \a data is null; the checksum so far is kept.
    unsigned short CrcAdd(const unsigned char* data, unsigned short size);

    /// Starts anew with the same polynomial.
    void CrcReset() { m_value = kInitialValue; }

    /// The checksum so far.
    unsigned short CrcGet() const { return static_cast<unsigned short>(~m_value); }

    bool operator==(unsigned short checksum) const { return CrcGet() == checksum; }

protected:
    /// The table of the default polynomial, shared by all objects.
    static const TKvCrcEntries<unsigned short> ms_pCRC16;

    /// Entry \a i (0 to 255) of the table in use.
    unsigned short CrcTableIndex(int i) const { return m_table.Entry(i); }

private:
    static constexpr unsigned short kInitialValue = 0xFFFF;

    TKvCrcTable<unsigned short> m_table;
    unsigned short m_value = kInitialValue;  // uncomplemented
};
