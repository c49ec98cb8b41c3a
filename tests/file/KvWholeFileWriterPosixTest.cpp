// What only this kind of system has: special files, and users who may not do everything.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "file/KvFileSystemUnCached.h"
#include "file/KvWholeFileWriter.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using EError = EKvFileSystemError;

constexpr unsigned int kNobody = 65534;

EError Rewrite(const std::string& path, const std::string& content = "new")
{
    CKvWholeFileWriter writer;
    const EError error =
        writer.Open(TKvString<char>(path.c_str()), EKvFileSystemOpenMode::WriteBinary);
    if (error != EError::Success)
        return error;
    CKvFileSystemUnCached::Write(writer.GetHandle(), content.data(),
                                 static_cast<int>(content.size()));
    return writer.Commit();
}

/// The result of Rewrite() for a user without root's rights; -1 when that cannot be tried.
int RewriteUnprivileged(const std::string& path, const std::string& content = "new")
{
    const pid_t child = fork();
    if (child == 0) {
        const bool dropped = geteuid() != 0 || (setgid(kNobody) == 0 && setuid(kNobody) == 0);
        _exit(dropped ? static_cast<int>(Rewrite(path, content)) : 255);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status))
        return -1;
    return WEXITSTATUS(status) == 255 ? -1 : WEXITSTATUS(status);
}

class KvWholeFileWriterPosixTest : public testing::Test
{
protected:
    void SetUp() override { fs::permissions(m_folder.Path(), fs::perms::all); }
    void TearDown() override { fs::permissions(m_folder.Path(), fs::perms::all); }

    CKvTemporaryFolder m_folder;
};

TEST_F(KvWholeFileWriterPosixTest, APipeIsWrittenToAndStaysAPipe)
{
    const std::string path = m_folder.Path("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const int reader = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(reader, 0);
    EXPECT_EQ(Rewrite(path), EError::Success);
    char bytes[8] = {};
    EXPECT_EQ(read(reader, bytes, sizeof bytes), 3);
    EXPECT_STREQ(bytes, "new");
    EXPECT_TRUE(fs::is_fifo(path));
    close(reader);
}

// Never as root, for whom a writer that is broken would replace the device itself.
TEST_F(KvWholeFileWriterPosixTest, AFullDeviceFailsTheCommit)
{
    if (!fs::is_character_file("/dev/full"))
        GTEST_SKIP() << "this system has no device that is always full";
    fs::create_symlink("/dev/full", m_folder.Path("full"));
    // The failure comes with the last flush, or with one that only the stream's error state keeps.
    for (const std::size_t size : {std::size_t{8}, std::size_t{100000}}) {
        const int error = RewriteUnprivileged(m_folder.Path("full"), std::string(size, 'x'));
        if (error == -1)
            GTEST_SKIP() << "this user may not become another";
        EXPECT_EQ(error, static_cast<int>(EError::CloseFailed));
    }
    EXPECT_TRUE(fs::is_symlink(m_folder.Path("full")));
}

TEST_F(KvWholeFileWriterPosixTest, ModesRefuseOrLimitTheWayOfWriting)
{
    struct Row
    {
        unsigned int fileMode;
        unsigned int folderMode;
        EError error;
        bool sameFile;  // rewritten in place: the folder takes no new file
    };
    const Row rows[] = {
        {0666, 0777, EError::Success, false},
        {0666, 0555, EError::Success, true},
        {0444, 0777, EError::NotOpened, true},
        {0444, 0555, EError::NotOpened, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(row.fileMode) + " in " + std::to_string(row.folderMode));
        const std::string path = m_folder.Write("file", "old content");
        const bool given = chown(path.c_str(), kNobody, kNobody) == 0;
        ASSERT_EQ(given, geteuid() == 0);
        fs::permissions(path, static_cast<fs::perms>(row.fileMode));
        struct stat before = {};
        ASSERT_EQ(stat(path.c_str(), &before), 0);
        fs::permissions(m_folder.Path(), static_cast<fs::perms>(row.folderMode));

        const int error = RewriteUnprivileged(path);
        fs::permissions(m_folder.Path(), fs::perms::all);
        if (error == -1)
            GTEST_SKIP() << "this user may not become another";
        EXPECT_EQ(error, static_cast<int>(row.error));
        EXPECT_EQ(m_folder.Read("file"), row.error == EError::Success ? "new" : "old content");
        struct stat after = {};
        ASSERT_EQ(stat(path.c_str(), &after), 0);
        EXPECT_EQ(after.st_ino == before.st_ino, row.sameFile);
        EXPECT_EQ(m_folder.Names(), std::vector<std::string>{"file"});
        fs::remove(path);
    }
}

TEST_F(KvWholeFileWriterPosixTest, TheOwnerOfTheFileStays)
{
    const std::string path = m_folder.Write("file", "old");
    if (chown(path.c_str(), kNobody, kNobody) != 0)
        GTEST_SKIP() << "this user may not give files away";
    // Setting the owner clears the set-user bit, so the mode must come after it.
    ASSERT_EQ(chmod(path.c_str(), 04755), 0);
    EXPECT_EQ(Rewrite(path), EError::Success);
    struct stat status = {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, kNobody);
    EXPECT_EQ(status.st_gid, kNobody);
    EXPECT_EQ(status.st_mode & 07777, 04755U);
}

}  // namespace
