#include "core/KvCrc32.h"

#include <cstddef>

namespace {

constexpr TKvCrcEntries<unsigned int> MakeTable(unsigned int polynomial)
{
    TKvCrcEntries<unsigned int> entries = {};
    for (std::size_t i = 0; i < entries.size(); ++i) {
        auto entry = static_cast<unsigned int>(i);
        for (int bit = 0; bit < 8; ++bit)
            entry = (entry & 1) != 0 ? (entry >> 1) ^ polynomial : entry >> 1;
        entries[i] = entry;
    }
    return entries;
}

}  // namespace

constexpr TKvCrcEntries<unsigned int> CKvCRC32::ms_pCRC32 = MakeTable(kDefaultPolynomial);

void CKvCRC32::CrcInitialize(unsigned int polynomial)
{
    CrcReset();
    if (polynomial == kDefaultPolynomial)
        m_table.UseShared(ms_pCRC32);
    else
        m_table.UseOwn(MakeTable(polynomial));
}

unsigned int CKvCRC32::CrcAdd(const void* data, unsigned int size)
{
    if (data == nullptr)
        return 0;
    m_value = m_table.Update(m_value, static_cast<const unsigned char*>(data), size);
    return CrcGet();
}

int CreateCRC32(const unsigned char* data, int size)
{
    if (size <= 0)
        return 0;
    CKvCRC32 crc;
    return static_cast<int>(crc.CrcAdd(data, static_cast<unsigned int>(size)));
}
