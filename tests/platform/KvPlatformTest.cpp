#include "platform/KvPlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "tests/support/KvTemporaryFolder.h"

namespace {

namespace fs = std::filesystem;

TEST(KvPlatformTest, BackslashesAndSlashesSeparateFoldersAlike)
{
    const CKvTemporaryFolder folder;
    for (const std::string separator : {"/", "\\"}) {
        SCOPED_TRACE(separator);
        const std::string levels = folder.Path() + separator + "levels";
        const std::string path = levels + separator + "a.level";
        const CKvDiskOperations& disk = KvPlatformHostDisk();
        EXPECT_TRUE(KvPlatformCreateFolder(levels.c_str()));
        EXPECT_FALSE(KvPlatformFileExists(path.c_str()));

        std::FILE* stream = disk.openStream(path.c_str(), "wb");
        ASSERT_NE(stream, nullptr);
        EXPECT_TRUE(disk.closeStream(stream));
        EXPECT_TRUE(KvPlatformFileExists(path.c_str()));
        EXPECT_EQ(folder.Read("levels/a.level"), "");

        CKvReplacement replacement;
        ASSERT_EQ(disk.beginReplacement(path.c_str(), "wb", replacement),
                  EKvReplacementStatus::Begun);
        EXPECT_EQ(disk.writeStream(replacement.stream, "new", 3), 3U);
        EXPECT_TRUE(disk.closeStream(replacement.stream));
        EXPECT_TRUE(disk.commitReplacement(replacement));
        EXPECT_EQ(folder.Read("levels/a.level"), "new");
        fs::remove_all(folder.Path("levels"));
    }
    EXPECT_TRUE(folder.Names().empty());
}

TEST(KvPlatformTest, AFolderIsNoFileAndAFileIsNoFolder)
{
    const CKvTemporaryFolder folder;
    const std::string file = folder.Write("file", "x");
    for (const char* mode : {"rb", "wb", "ab"})
        EXPECT_EQ(KvPlatformHostDisk().openStream(folder.Path().c_str(), mode), nullptr) << mode;
    EXPECT_FALSE(KvPlatformFileExists(folder.Path().c_str()));
    EXPECT_FALSE(KvPlatformFileExists(""));
    EXPECT_TRUE(KvPlatformFileExists(file.c_str()));

    EXPECT_TRUE(KvPlatformCreateFolder(folder.Path().c_str()));
    EXPECT_FALSE(KvPlatformCreateFolder(file.c_str()));
    EXPECT_FALSE(KvPlatformCreateFolder(folder.Path("absent/below").c_str()));
}

}  // namespace
