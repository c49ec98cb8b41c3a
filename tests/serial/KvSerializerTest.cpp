#include "serial/KvSerializer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <vector>

#include "serial/KvSerialLoader.h"
#include "serial/KvSerialSaver.h"
#include "serial/KvSerialSizer.h"

namespace {

using Bytes = std::vector<unsigned char>;

/// One value of each kind, described once for all three serializers.
struct Record
{
    TKvString<char> name;
    float weight = 0;
    unsigned int flags = 0;
    int count = 0;
    unsigned char level = 0;
    char mark = 0;
    TKvString<char> empty;

    bool Serialize(IKvSerializer& serializer)
    {
        // No short circuit: a serializer that failed must go on failing.
        const int results[] = {serializer.Serialize(name),  serializer.Serialize(weight),
                               serializer.Serialize(flags), serializer.Serialize(count),
                               serializer.Serialize(level), serializer.Serialize(mark),
                               serializer.Serialize(empty)};
        return std::count(std::begin(results), std::end(results), 1) == 7;
    }

    bool operator==(const Record&) const = default;
};

Record MakeRecord()
{
    return {"abc", 1.5F, 0xFFFFFFFE, -2, 200, 'z', ""};
}

/// The record's bytes on a little-endian machine.
const Bytes& Image()
{
    static const Bytes image = {3,    0,    0,    0,    'a',  'b',  'c',  0,    0,
                                0xC0, 0x3F, 0xFE, 0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0xFF,
                                0xFF, 0xC8, 'z',  0,    0,    0,    0};
    return image;
}

class KvSerializerTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (std::endian::native != std::endian::little)
            GTEST_SKIP() << "the expected bytes are those of a little-endian machine";
    }
};

TEST_F(KvSerializerTest, ARecordIsSizedSavedAndLoadedByTheSameFunction)
{
    Record source = MakeRecord();
    CKvSerialSizer sizer;
    EXPECT_TRUE(source.Serialize(sizer));
    ASSERT_EQ(sizer.GetLength(), Image().size());

    Bytes buffer(sizer.GetLength());
    CKvSerialSaver saver(buffer.data(), buffer.size());
    EXPECT_TRUE(source.Serialize(saver));
    EXPECT_FALSE(saver.hasOverflowed());
    EXPECT_EQ(saver.getFlow(), 0);
    EXPECT_EQ(buffer, Image());

    Record target;
    target.empty = "stale";
    CKvSerialLoader loader(buffer.data(), buffer.size());
    EXPECT_TRUE(target.Serialize(loader));
    EXPECT_FALSE(loader.hasOverflowed());
    EXPECT_EQ(target, source);
}

TEST_F(KvSerializerTest, EveryShorterBufferFailsInsideItsEnd)
{
    for (std::size_t length = 0; length < Image().size(); ++length) {
        SCOPED_TRACE(length);
        Record source = MakeRecord();
        Bytes saved(length);  // exactly sized, so that the sanitizer sees one byte too many
        CKvSerialSaver saver(saved.data(), length);
        EXPECT_FALSE(source.Serialize(saver));
        EXPECT_TRUE(saver.hasOverflowed());
        EXPECT_EQ(saver.getLength(), length);
        const auto used = static_cast<long>(length) - saver.getFlow();
        EXPECT_TRUE(std::equal(saved.begin(), saved.begin() + used, Image().begin()));

        Bytes image(Image().begin(), Image().begin() + static_cast<long>(length));
        Record target;
        target.name = target.empty = "kept";
        CKvSerialLoader loader(image.data(), length);
        EXPECT_FALSE(target.Serialize(loader));
        EXPECT_TRUE(loader.hasOverflowed());
        EXPECT_EQ(target.name, length < 7 ? "kept" : "abc");
        EXPECT_EQ(target.empty, "kept");
    }
}

TEST_F(KvSerializerTest, AfterAValueThatDoesNotFitASmallerOneIsRefusedToo)
{
    Bytes buffer(6, 0xEE);
    CKvSerialSaver saver(buffer.data(), buffer.size());
    int number = 7;
    char mark = 'm';
    EXPECT_EQ(saver.Serialize(number), 1);
    EXPECT_EQ(saver.Serialize(mark), 1);
    EXPECT_EQ(saver.Serialize(number), 0);
    EXPECT_EQ(saver.Serialize(mark), 0);
    EXPECT_EQ(saver.getFlow(), 1);
    EXPECT_EQ(buffer, (Bytes{7, 0, 0, 0, 'm', 0xEE}));
}

TEST_F(KvSerializerTest, StringLengthsThatTheBufferCannotHoldAreRefused)
{
    for (const int length : {4, 0x7FFFFFFF, -1, -4, static_cast<int>(0x80000000)}) {
        SCOPED_TRACE(length);
        Bytes image = {0, 0, 0, 0, 'a', 'b', 'c'};
        std::memcpy(image.data(), &length, sizeof length);
        CKvSerialLoader loader(image.data(), image.size());
        TKvString<char> text = "kept";
        EXPECT_EQ(loader.Serialize(text), 0);
        EXPECT_EQ(text, "kept");
        EXPECT_TRUE(loader.hasOverflowed());
    }
}

TEST_F(KvSerializerTest, ALoadedStringEndsAtItsZeroByteAndTheNextValueStandsBehindAllItsBytes)
{
    Bytes image = {3, 0, 0, 0, 'a', 0, 'c', 'z'};
    CKvSerialLoader loader(image.data(), image.size());
    TKvString<char> text;
    char mark = 0;
    EXPECT_EQ(loader.Serialize(text), 1);
    EXPECT_EQ(loader.Serialize(mark), 1);
    EXPECT_EQ(text, "a");
    EXPECT_EQ(mark, 'z');
}

}  // namespace
