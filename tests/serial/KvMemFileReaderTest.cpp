#include "serial/KvMemFileReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

constexpr std::uint64_t kHigh = 0xFEDCBA9876543210;

CKvMemFileReader ReaderOf(const Bytes& image)
{
    return {image.data(), static_cast<int>(image.size())};
}

/// One value of each kind that an image can hold.
struct Values
{
    std::int8_t s8 = 1;
    std::uint8_t u8 = 1;
    std::int16_t s16 = 1;
    std::uint16_t u16 = 1;
    std::int32_t s32 = 1;
    std::uint32_t u32 = 1;
    float f32 = 1;
    std::int64_t s64 = 1;
    std::uint64_t u64 = 1;
    TKvString<char> text = "stale";

    bool Read(CKvMemFileReader& reader)
    {
        // No short circuit: after a failure the later reads must fail and zero their targets.
        const bool results[] = {reader.ReadS8(s8),      reader.ReadU8(u8),   reader.ReadS16(s16),
                                reader.ReadU16(u16),    reader.ReadS32(s32), reader.ReadU32(u32),
                                reader.ReadF32(f32),    reader.ReadS64(s64), reader.ReadU64(u64),
                                reader.ReadString(text)};
        return std::count(std::begin(results), std::end(results), true) == 10;
    }

    bool operator==(const Values&) const = default;
};

TEST(KvMemFileReaderTest, ReadsEachKindAndRefusesEveryTruncation)
{
    if (std::endian::native != std::endian::little)
        GTEST_SKIP() << "the image is that of a little-endian machine";
    const Bytes image = {0xFE, 0xFE, 0xFE, 0xFF, 0xFE, 0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFE, 0xFF,
                         0xFF, 0xFF, 0,    0,    0xC0, 0x3F, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
                         0xFF, 0xFF, 0x10, 0x32, 0x54, 0x76, 0x98, 0xBA, 0xDC, 0xFE, 'a',  0};
    CKvMemFileReader whole = ReaderOf(image);
    Values values;
    EXPECT_TRUE(values.Read(whole));
    EXPECT_EQ(values, (Values{-2, 0xFE, -2, 0xFFFE, -2, 0xFFFFFFFE, 1.5F, -2, kHigh, "a"}));
    EXPECT_FALSE(whole.HasFailed());
    EXPECT_EQ(whole.GetRemaining(), 0);

    for (std::size_t size = 0; size < image.size(); ++size) {
        SCOPED_TRACE(size);
        const Bytes part(image.begin(), image.begin() + static_cast<long>(size));
        CKvMemFileReader reader = ReaderOf(part);
        Values cut;
        EXPECT_FALSE(cut.Read(reader));
        EXPECT_TRUE(reader.HasFailed());
        EXPECT_EQ(cut.s8, size < 1 ? 0 : -2);
        EXPECT_EQ(cut.u64, size < 34 ? 0 : kHigh);
        EXPECT_EQ(cut.text, "");
    }
}

TEST(KvMemFileReaderTest, AStringMovesPastItsTerminator)
{
    const Bytes image = {'a', 'b', 0, 'c', 0, 0};
    CKvMemFileReader reader = ReaderOf(image);
    TKvString<char> text;
    EXPECT_TRUE(reader.ReadString(text));
    EXPECT_EQ(text, "ab");
    EXPECT_EQ(reader.GetRemaining(), 3);
    EXPECT_TRUE(reader.ReadString(text));
    EXPECT_EQ(text, "c");
    EXPECT_TRUE(reader.ReadString(text));
    EXPECT_EQ(text, "");
    EXPECT_EQ(reader.GetRemaining(), 0);
}

TEST(KvMemFileReaderTest, ARefusedReadMovesNothingAndLaterOnesThatWouldFitFail)
{
    const Bytes image = {'a', 'b', 'c'};  // no terminator
    for (const int size : {4, -1, static_cast<int>(0x80000000)}) {
        SCOPED_TRACE(size);
        CKvMemFileReader reader = ReaderOf(image);
        Bytes target(4, 0xEE);
        EXPECT_FALSE(reader.Read(target.data(), size));
        EXPECT_EQ(target, Bytes(4, size > 0 ? 0 : 0xEE));
        std::uint8_t next = 0xEE;
        EXPECT_FALSE(reader.ReadU8(next));
        EXPECT_EQ(next, 0);
        EXPECT_EQ(reader.GetRemaining(), 3);
    }
    CKvMemFileReader reader = ReaderOf(image);
    TKvString<char> text = "stale";
    EXPECT_FALSE(reader.ReadString(text));
    EXPECT_EQ(text, "");
    EXPECT_EQ(reader.GetRemaining(), 3);
}

TEST(KvMemFileReaderTest, AnImageOfNoOrNegativeSizeHoldsNothing)
{
    for (const int size : {0, -5}) {
        CKvMemFileReader reader(nullptr, size);
        EXPECT_TRUE(reader.Read(nullptr, 0));
        TKvString<char> text;
        EXPECT_FALSE(reader.ReadString(text));
        EXPECT_EQ(reader.GetRemaining(), 0);
    }
}

}  // namespace
