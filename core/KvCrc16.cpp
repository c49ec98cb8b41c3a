#include "core/KvCrc16.h"

#include <cstddef>

namespace {

constexpr TKvCrcEntries<unsigned short> MakeTable(unsigned short polynomial)
{
    TKvCrcEntries<unsigned short> entries = {};
    for (std::size_t i = 0; i < entries.size(); ++i) {
        unsigned int entry = static_cast<unsigned int>(i) << 8;
        for (int bit = 0; bit < 8; ++bit)
            entry = (entry & 0x8000) != 0 ? (entry << 1) ^ polynomial : entry << 1;
        entries[i] = static_cast<unsigned short>(entry);
    }
    return entries;
}

}  // namespace

constexpr TKvCrcEntries<unsigned short> CKvCRC16::ms_pCRC16 = MakeTable(kDefaultPolynomial);

void CKvCRC16::CrcInitialize(unsigned short polynomial)
{
    CrcReset();
    if (polynomial == kDefaultPolynomial)
        m_table.UseShared(ms_pCRC16);
    else
        m_table.UseOwn(MakeTable(polynomial));
}

unsigned short CKvCRC16::CrcAdd(const unsigned char* data, unsigned short size)
{
    if (data == nullptr)
        return 0;
    m_value = m_table.Update(m_value, data, size);
    return CrcGet();
}
