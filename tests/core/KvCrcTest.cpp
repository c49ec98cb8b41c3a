#include <gtest/gtest.h>

#include <string>

#include "core/KvCrc16.h"
#include "core/KvCrc32.h"

namespace {

/// Feeds the text in two pieces; between them the checksum moves on to another object, which had
/// another table before.
template <typename Crc, typename Word>
void ExpectChecksum(Word polynomial, const std::string& text, Word checksum)
{
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    Crc first(polynomial);
    first.CrcAdd(bytes, 4);
    Crc second(Word{0x1234});
    second = first;
    EXPECT_EQ(second.CrcAdd(nullptr, 5), 0U);
    EXPECT_EQ(second.CrcAdd(bytes + 4, static_cast<Word>(text.size() - 4)), checksum);
}

// The 32-bit values are those of the catalogue of parametrised CRC algorithms: CRC-32/ISO-HDLC and,
// for the polynomial 0x82F63B78, CRC-32/ISCSI (also in RFC 3720, appendix B.4: 32 zero bytes).
TEST(KvCrcTest, ChecksumsOfKnownTexts)
{
    ExpectChecksum<CKvCRC16, unsigned short>(0x1021, "123456789", 0x914B);
    ExpectChecksum<CKvCRC32>(0xEDB88320U, "123456789", 0xCBF43926U);
    ExpectChecksum<CKvCRC32>(0x82F63B78U, "123456789", 0xE3069283U);
    ExpectChecksum<CKvCRC32>(0x82F63B78U, std::string(32, '\0'), 0x8A9136AAU);
}

}  // namespace
