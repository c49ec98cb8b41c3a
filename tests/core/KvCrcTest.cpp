#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "core/KvCrc16.h"
#include "core/KvCrc32.h"

namespace {

unsigned short Add(CKvCRC16& crc, const std::string& text)
{
    return crc.CrcAdd(reinterpret_cast<const unsigned char*>(text.data()),
                      static_cast<unsigned short>(text.size()));
}

unsigned int Add(CKvCRC32& crc, const std::string& text)
{
    return crc.CrcAdd(text.data(), static_cast<unsigned int>(text.size()));
}

// The 32-bit values are those of the catalogue of parametrised CRC algorithms: CRC-32/ISO-HDLC and,
// for the polynomial 0x82F63B78, CRC-32/ISCSI (also in RFC 3720, appendix B.4: 32 zero bytes).
TEST(KvCrcTest, ChecksumsOfKnownTexts)
{
    struct Row
    {
        unsigned int polynomial;
        std::string text;
        unsigned int checksum;
    };
    const Row rows16[] = {{0x1021, "123456789", 0x914B}, {0x1021, "A", 0xB915}, {0x1021, "", 0}};
    const Row rows32[] = {{0xEDB88320, "123456789", 0xCBF43926},
                          {0xEDB88320, "", 0},
                          {0x82F63B78, "123456789", 0xE3069283},
                          {0x82F63B78, std::string(32, '\0'), 0x8A9136AA}};

    for (const Row& row : rows16)
        for (std::size_t cut = 0; cut <= row.text.size(); ++cut) {
            CKvCRC16 crc(static_cast<unsigned short>(row.polynomial));
            Add(crc, row.text.substr(0, cut));
            EXPECT_EQ(Add(crc, row.text.substr(cut)), row.checksum)
                << row.text << " cut at " << cut;
            EXPECT_TRUE(crc == static_cast<unsigned short>(row.checksum));
        }
    for (const Row& row : rows32)
        for (std::size_t cut = 0; cut <= row.text.size(); ++cut) {
            CKvCRC32 crc(row.polynomial);
            Add(crc, row.text.substr(0, cut));
            EXPECT_EQ(Add(crc, row.text.substr(cut)), row.checksum)
                << row.text << " cut at " << cut;
            EXPECT_TRUE(crc == row.checksum);
        }

    EXPECT_EQ(CreateCRC32(reinterpret_cast<const unsigned char*>("123456789"), 9),
              static_cast<int>(0xCBF43926));
    EXPECT_EQ(CreateCRC32(nullptr, 0), 0);
}

TEST(KvCrcTest, NullDataGivesZeroAndKeepsTheChecksum)
{
    CKvCRC32 crc;
    Add(crc, "1234");
    EXPECT_EQ(crc.CrcAdd(nullptr, 5), 0U);
    EXPECT_EQ(Add(crc, "56789"), 0xCBF43926);
}

TEST(KvCrcTest, CopiesCarryOnWithTheSamePolynomialAfterTheOriginalIsGone)
{
    CKvCRC32 copy;
    {
        CKvCRC32 original(0x82F63B78);
        Add(original, "1234");
        copy = original;
        original.CrcInitialize(0x12345678);
    }
    EXPECT_EQ(Add(copy, "56789"), 0xE3069283);
}

TEST(KvCrcTest, TheDefaultPolynomialComesBackAfterAnother)
{
    CKvCRC16 crc;
    const unsigned short standard = Add(crc, "A");
    crc.CrcInitialize(0x8005);
    EXPECT_NE(Add(crc, "A"), standard);
    crc.CrcInitialize(0x1021);
    EXPECT_EQ(Add(crc, "A"), standard);
}

}  // namespace
