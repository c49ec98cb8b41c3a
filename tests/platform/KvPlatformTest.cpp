#include "platform/KvPlatformFolders.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/KvTemporaryFolder.h"
#include "tests/support/KvUnprivileged.h"

namespace {

TEST(KvPlatformTest, BothSeparatorsLeadToFilesAndFoldersAreNoFiles)
{
    const CKvDiskOperations& disk = KvPlatformHostDisk();
    for (const std::string separator : {"/", "\\"}) {
        const CKvTemporaryFolder folder;
        const std::string levels = folder.Path() + separator + "levels";
        const std::string path = levels + separator + "a.level";
        EXPECT_TRUE(KvPlatformFolders().create(levels.c_str()));
        EXPECT_TRUE(KvPlatformFolders().create(levels.c_str()));
        EXPECT_FALSE(KvPlatformFileExists(levels.c_str()));
        EXPECT_EQ(disk.openStream(levels.c_str(), "rb"), nullptr);

        CKvReplacement replacement;
        ASSERT_EQ(disk.beginReplacement(path.c_str(), "wb", replacement),
                  EKvReplacementStatus::Begun);
        EXPECT_TRUE(disk.closeStream(replacement.stream));
        EXPECT_TRUE(disk.commitReplacement(replacement));
        EXPECT_EQ(folder.Read("levels/a.level"), "");
        EXPECT_TRUE(KvPlatformFileExists(path.c_str()));
        EXPECT_FALSE(KvPlatformFolders().create(path.c_str()));
    }
}

TEST(KvPlatformTest, AStreamThatLostBytesSaysSoWhenItIsClosed)
{
    // Lost with the last flush, or with an earlier write that only the stream's state tells of.
    for (const std::size_t size : {std::size_t{9}, std::size_t{99999}}) {
        const auto writeToFullDevice = [size] {
            const CKvDiskOperations& disk = KvPlatformHostDisk();
            std::FILE* stream = disk.openStream("/dev/full", "wb");
            disk.writeStream(stream, std::string(size, 'x').data(), size);
            return disk.closeStream(stream) ? 1 : 0;
        };
        EXPECT_EQ(KvRunUnprivileged(writeToFullDevice), 0);
    }
}

}  // namespace
