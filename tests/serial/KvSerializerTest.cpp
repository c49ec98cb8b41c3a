#include "serial/KvSerializer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "serial/KvSerialLoader.h"
#include "serial/KvSerialSaver.h"
#include "serial/KvSerialSizer.h"

namespace {

using Bytes = std::vector<unsigned char>;

/// One value of each kind, described once for all three serializers.
struct CRecord
{
    TKvString<char> name;
    float weight = 0;
    unsigned int flags = 0;
    int count = 0;
    unsigned char level = 0;
    char mark = 0;

    bool Serialize(IKvSerializer& serializer)
    {
        // No short circuit: a serializer that failed must go on failing.
        const int results[] = {serializer.Serialize(name),  serializer.Serialize(weight),
                               serializer.Serialize(flags), serializer.Serialize(count),
                               serializer.Serialize(level), serializer.Serialize(mark)};
        return std::count(std::begin(results), std::end(results), 1) == 6;
    }

    bool operator==(const CRecord&) const = default;
};

TEST(KvSerializerTest, ARecordIsSizedSavedAndLoadedAndEveryShorterBufferFails)
{
    // The record's bytes on a little-endian machine.
    const Bytes image = {3,    0,    0,    0,    'a',  'b',  'c',  0,    0,    0xC0, 0x3F,
                         0xFE, 0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xC8, 'z'};
    CRecord source = {"abc", 1.5F, 0xFFFFFFFE, -2, 200, 'z'};
    CKvSerialSizer sizer;
    EXPECT_TRUE(source.Serialize(sizer));
    EXPECT_EQ(sizer.GetLength(), image.size());

    for (std::size_t length = 0; length <= image.size(); ++length) {
        SCOPED_TRACE(length);
        const bool isWhole = length == image.size();
        Bytes bytes(length);  // exactly sized, so that the sanitizer sees one byte too many
        CKvSerialSaver saver(bytes.data(), length);
        EXPECT_EQ(source.Serialize(saver), isWhole);
        EXPECT_EQ(saver.hasOverflowed(), !isWhole);
        const auto used = static_cast<long>(length) - saver.getFlow();
        EXPECT_TRUE(std::equal(bytes.begin(), bytes.begin() + used, image.begin()));

        std::copy_n(image.begin(), length, bytes.begin());
        CRecord target = {"kept"};
        CKvSerialLoader loader(bytes.data(), length);
        EXPECT_EQ(target.Serialize(loader), isWhole);
        EXPECT_EQ(loader.hasOverflowed(), !isWhole);
        EXPECT_EQ(target == source, isWhole);
        EXPECT_EQ(target.name, length < 7 ? "kept" : "abc");
    }
}

}  // namespace
