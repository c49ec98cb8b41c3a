#include "file/KvWholeFileWriter.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "file/KvFieldWriter.h"
#include "file/KvFileSystemUnCached.h"
#include "tests/support/KvFaultyDisk.h"
#include "tests/support/KvTemporaryFolder.h"
#include "tests/support/KvUnprivileged.h"

namespace {

namespace fs = std::filesystem;
using EError = EKvFileSystemError;
using EMode = EKvFileSystemOpenMode;
using Names = std::vector<std::string>;

constexpr unsigned int kNobody = 65534;

/// Writes \a content in three writes.
EError Rewrite(const std::string& path, const std::string& content = "new")
{
    CKvWholeFileWriter writer;
    const EError error = writer.Open(path.c_str(), EMode::WriteBinary);
    if (error != EError::Success)
        return error;
    const std::size_t third = content.size() / 3;
    for (std::size_t i = 0; i < 3; ++i)
        CKvFileSystemUnCached::Write(writer.GetHandle(), content.data() + i * third,
                                     static_cast<int>(third));
    return writer.Commit();
}

/// The result of Rewrite() for a user without root's rights.
EError RewriteUnprivileged(const std::string& path, const std::string& content = "new")
{
    return EError{KvRunUnprivileged([&] { return static_cast<int>(Rewrite(path, content)); })};
}

class KvWholeFileWriterTest : public testing::Test
{
protected:
    CKvTemporaryFolder m_folder;
};

TEST_F(KvWholeFileWriterTest, AFailureAnywhereLeavesTheFolderAsItWas)
{
    using EFaults = CKvFaultyDisk::EFaults;
    const std::string name(255, 'n');  // as long as names can be, with no room for an addition
    const std::string path = m_folder.Path(name);
    int runs = 0;
    for (const std::string before : {"old", "<absent>"})
        for (const EFaults faults : {EFaults::Once, EFaults::FromThenOn}) {
            int failing = 0;
            for (bool failed = true; failed; ++runs) {
                SCOPED_TRACE(before + ", failing operation " + std::to_string(++failing));
                fs::remove(path);
                if (before == "old")
                    m_folder.Write(name, before);
                const Names names = m_folder.Names();
                // Opened and abandoned: discarded too.
                EXPECT_EQ(CKvWholeFileWriter().Open(path.c_str(), EMode::WriteText),
                          EError::Success);
                const CKvFaultyDisk disk(failing, faults);
                const EError error = Rewrite(path);
                failed = disk.HasFailed();
                EXPECT_EQ(error == EError::Success, !failed);
                EXPECT_EQ(m_folder.Read(name), failed ? before : "new");
                EXPECT_EQ(m_folder.Names(), failed ? names : Names{name});
            }
        }
    EXPECT_EQ(runs, 4 * 7);  // begin, three writes, close, commit, and a run without fault
}

TEST_F(KvWholeFileWriterTest, LinksOfBothKindsAndPipesStay)
{
    const std::string file = m_folder.Write("file", "old content");
    fs::create_hard_link(file, m_folder.Path("same"));
    fs::create_symlink("file", m_folder.Path("link"));
    fs::create_symlink("link", m_folder.Path("link to link"));
    fs::create_symlink("born", m_folder.Path("dangling"));
    for (const std::string link : {"link to link", "dangling"}) {
        EXPECT_EQ(Rewrite(m_folder.Path(link)), EError::Success);
        EXPECT_TRUE(fs::is_symlink(m_folder.Path(link))) << link;
    }
    EXPECT_EQ(m_folder.Read("same") + m_folder.Read("born"), "newnew");

    const std::string pipe = m_folder.Path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    EXPECT_EQ(Rewrite(pipe), EError::Success);
    EXPECT_TRUE(fs::is_fifo(pipe));
    close(reader);
}

TEST_F(KvWholeFileWriterTest, AFullDeviceFailsTheCommit)
{
    fs::create_symlink("/dev/full", m_folder.Path("full"));
    // The failure comes with the last flush, or with one that only the stream's error state keeps.
    for (const std::size_t size : {std::size_t{9}, std::size_t{99999}})
        EXPECT_EQ(RewriteUnprivileged(m_folder.Path("full"), std::string(size, 'x')),
                  EError::CloseFailed);
}

TEST_F(KvWholeFileWriterTest, ModesRefuseOrLimitTheWayOfWriting)
{
    for (const fs::perms folderMode : {fs::perms{0777}, fs::perms{0555}})
        for (const fs::perms mode : {fs::perms{0666}, fs::perms{0444}}) {
            const bool mayWrite = mode == fs::perms{0666};
            const std::string path = m_folder.Write("file", "old content");
            fs::permissions(path, mode);
            fs::permissions(m_folder.Path(), folderMode);
            EXPECT_EQ(RewriteUnprivileged(path), mayWrite ? EError::Success : EError::NotOpened);
            fs::permissions(m_folder.Path(), fs::perms::all);
            EXPECT_EQ(m_folder.Read("file"), mayWrite ? "new" : "old content");
            fs::remove(path);
            EXPECT_TRUE(m_folder.Names().empty());
        }
    for (const std::string& refused : {m_folder.Path(), m_folder.Path("absent/x"), std::string()})
        EXPECT_EQ(Rewrite(refused), EError::NotOpened) << refused;
}

TEST_F(KvWholeFileWriterTest, ModeAndOwnerOfTheFileStay)
{
    const std::string path = m_folder.Write("file", "old");
    // Only root gives files away, and writes to them without clearing the set-user bit.
    const bool isRoot = geteuid() == 0;
    const unsigned int owner = isRoot ? kNobody : geteuid();
    const unsigned int mode = isRoot ? 04755 : 0705;
    ASSERT_EQ(chown(path.c_str(), owner, static_cast<gid_t>(-1)), 0);
    // Setting the owner clears the set-user bit, so the mode must come after it.
    ASSERT_EQ(chmod(path.c_str(), mode), 0);
    EXPECT_EQ(Rewrite(path), EError::Success);
    struct stat status = {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, owner);
    EXPECT_EQ(status.st_mode & 07777, mode);
}

TEST(KvFieldWriterTest, FieldsOfAnyLengthKeepTheirOrderUnderTheFileLayersSwapFlagToo)
{
    constexpr std::size_t kBuffer = 65536;
    const CKvTemporaryFolder folder;
    for (const std::size_t before : {std::size_t{0}, kBuffer - 4, kBuffer - 1})
        for (const std::size_t size : {std::size_t{4}, kBuffer, kBuffer + 1}) {
            const std::string text = std::string(before, 'a') + std::string(size, 'b');
            CKvWholeFileWriter file;
            ASSERT_EQ(file.Open(folder.Path("out").c_str(), EMode::WriteBinary), EError::Success);
            {
                CKvFieldWriter writer(file.GetHandle(), true);
                writer.WriteBytes(text.data(), before);
                writer.WriteBytes(text.data() + before, size);
                writer.WriteU32(0x31323334);
                CKvFieldWriter collected = CKvFieldWriter::ToMemory(true);
                CKvFileSystemUnCached::SetSwapDWORDOnWrite(true);
                writer.WriteBytes("12345", 5);
                writer.WriteBytes(text.data(), text.size());
                collected.WriteBytes("123456", 6);
                CKvFileSystemUnCached::SetSwapDWORDOnWrite(false);
                writer.WriteBytes("12345", 5);
                collected.WriteBytes(text.data(), text.size());
                CKvFileSystemUnCached::SetSwapDWORDOnWrite(true);
                writer.WriteCollected(collected);
                CKvFileSystemUnCached::SetSwapDWORDOnWrite(false);
            }
            std::string swapped = text;
            for (std::size_t i = 0; i + 4 <= text.size(); i += 4)
                std::reverse(swapped.data() + i, swapped.data() + i + 4);
            EXPECT_EQ(file.Commit(), EError::Success);
            std::string expected = text;
            expected.append("123443215").append(swapped).append("12345432156").append(text);
            EXPECT_TRUE(folder.Read("out") == expected) << before << ' ' << size;
        }
}

}  // namespace
