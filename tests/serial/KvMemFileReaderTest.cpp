#include "serial/KvMemFileReader.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

CKvMemFileReader ReaderOf(const Bytes& image)
{
    return {image.data(), static_cast<int>(image.size())};
}

TEST(KvMemFileReaderTest, ReadsEachKindAndRefusesEveryTruncation)
{
    const Bytes image = {0xFE, 0xFE, 0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0,    0,   0xC0, 0x3F,
                         0x10, 0x32, 0x54, 0x76, 0x98, 0xBA, 0xDC, 0xFE, 'a', 0,    0};
    for (std::size_t size = 0; size <= image.size(); ++size) {
        SCOPED_TRACE(size);
        const bool isWhole = size == image.size();
        const Bytes part(image.begin(), image.begin() + static_cast<long>(size));
        CKvMemFileReader reader = ReaderOf(part);
        std::int8_t s8 = 1;
        std::uint16_t u16 = 1;
        std::int32_t s32 = 1;
        float f32 = 1;
        std::uint64_t u64 = 1;
        TKvString<char> text = "stale";
        TKvString<char> empty = "stale";
        // After a failure the later reads must fail and empty their targets.
        EXPECT_EQ(reader.ReadS8(s8), size >= 1);
        EXPECT_EQ(reader.ReadU16(u16), size >= 3);
        EXPECT_EQ(reader.ReadS32(s32), size >= 7);
        EXPECT_EQ(reader.ReadF32(f32), size >= 11);
        EXPECT_EQ(reader.ReadU64(u64), size >= 19);
        EXPECT_EQ(reader.ReadString(text), size >= 21);
        EXPECT_EQ(reader.ReadString(empty), isWhole);
        EXPECT_EQ(reader.HasFailed(), !isWhole);
        EXPECT_EQ(s8, size < 1 ? 0 : -2);
        EXPECT_EQ(s32, size < 7 ? 0 : -2);
        EXPECT_EQ(f32, size < 11 ? 0 : 1.5F);
        EXPECT_EQ(u64, size < 19 ? 0 : 0xFEDCBA9876543210);
        EXPECT_EQ(text, size < 21 ? "" : "a");
        EXPECT_EQ(empty, "");
    }
}

}  // namespace
