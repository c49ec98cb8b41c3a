#include "file/KvWholeFileWriter.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "file/KvFileSystemUnCached.h"
#include "tests/support/KvFaultyDisk.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using EError = EKvFileSystemError;
using EMode = EKvFileSystemOpenMode;
using Names = std::vector<std::string>;

TKvString<char> ToString(const std::string& text)
{
    return TKvString<char>(text.c_str());
}

/// Writes "new" in three writes.
EError Rewrite(const std::string& path)
{
    CKvWholeFileWriter writer;
    const EError error = writer.Open(ToString(path), EMode::WriteBinary);
    if (error != EError::Success)
        return error;
    for (const char* byte : {"n", "e", "w"})
        CKvFileSystemUnCached::Write(writer.GetHandle(), byte, 1);
    return writer.Commit();
}

class KvWholeFileWriterTest : public testing::Test
{
protected:
    CKvTemporaryFolder m_folder;
};

TEST_F(KvWholeFileWriterTest, TheNewContentAppearsWithTheCommitAndNotBefore)
{
    const std::string path = m_folder.Write("file", "old");
    CKvWholeFileWriter writer;
    for (const char* expected : {"old", "new"}) {
        SCOPED_TRACE(expected);
        ASSERT_EQ(writer.Open(ToString(path), EMode::WriteText), EError::Success);
        EXPECT_EQ(writer.Open(ToString(path), EMode::WriteText), EError::AlreadyOpen);
        EXPECT_EQ(CKvFileSystemUnCached::Write(writer.GetHandle(), "new", 3), 3);
        EXPECT_EQ(m_folder.Read("file"), expected);
        EXPECT_EQ(writer.Commit(), EError::Success);
        EXPECT_EQ(m_folder.Read("file"), "new");
        EXPECT_EQ(writer.Commit(), EError::CloseFailed);
        EXPECT_EQ(m_folder.Names(), Names{"file"});
    }
    {
        CKvWholeFileWriter abandoned;
        ASSERT_EQ(abandoned.Open(ToString(path), EMode::WriteBinary), EError::Success);
    }
    EXPECT_EQ(m_folder.Read("file"), "new");
    EXPECT_EQ(m_folder.Names(), Names{"file"});
}

TEST_F(KvWholeFileWriterTest, AFailureAnywhereLeavesTheFolderAsItWas)
{
    using EFaults = CKvFaultyDisk::EFaults;
    int runs = 0;
    for (const std::string before : {"old", "<absent>"}) {
        const Names names = before == "old" ? Names{"file"} : Names{};
        for (const EFaults faults : {EFaults::Once, EFaults::FromThenOn}) {
            int failing = 0;
            for (bool failed = true; failed; ++runs) {
                SCOPED_TRACE(before + ", failing operation " + std::to_string(++failing));
                fs::remove(m_folder.Path("file"));
                if (before == "old")
                    m_folder.Write("file", before);
                const CKvFaultyDisk disk(failing, faults);
                const EError error = Rewrite(m_folder.Path("file"));
                failed = disk.HasFailed();
                EXPECT_EQ(error == EError::Success, !failed);
                EXPECT_EQ(m_folder.Read("file"), failed ? before : "new");
                EXPECT_EQ(m_folder.Names(), failed ? names : Names{"file"});
            }
        }
    }
    EXPECT_EQ(runs, 4 * 7);  // begin, three writes, close, commit, and a run without fault
}

TEST_F(KvWholeFileWriterTest, LinksAreFollowedAndStayLinks)
{
    fs::create_directory(m_folder.Path("real"));
    m_folder.Write("real/file", "old");
    fs::create_symlink("real/file", m_folder.Path("link"));
    fs::create_symlink("link", m_folder.Path("link to link"));
    fs::create_symlink("real/born", m_folder.Path("dangling"));

    EXPECT_EQ(Rewrite(m_folder.Path("link to link")), EError::Success);
    EXPECT_EQ(Rewrite(m_folder.Path("dangling")), EError::Success);
    EXPECT_EQ(m_folder.Read("real/file"), "new");
    EXPECT_EQ(m_folder.Read("real/born"), "new");
    EXPECT_EQ(m_folder.Names(), (Names{"dangling", "link", "link to link", "real"}));
    for (const char* link : {"dangling", "link", "link to link"})
        EXPECT_TRUE(fs::is_symlink(m_folder.Path(link))) << link;
    EXPECT_EQ(std::distance(fs::directory_iterator(m_folder.Path("real")), {}), 2);
}

TEST_F(KvWholeFileWriterTest, OtherNamesOfTheFileSeeTheNewContent)
{
    const std::string path = m_folder.Write("file", "old content");
    fs::create_hard_link(path, m_folder.Path("other"));
    EXPECT_EQ(Rewrite(path), EError::Success);
    EXPECT_EQ(m_folder.Read("other"), "new");
    EXPECT_EQ(fs::hard_link_count(path), 2U);
    EXPECT_EQ(m_folder.Names(), (Names{"file", "other"}));
}

TEST_F(KvWholeFileWriterTest, TheModeOfTheFileStays)
{
    const std::string path = m_folder.Write("file", "old");
    for (const unsigned int mode : {0600U, 0640U, 0777U}) {
        fs::permissions(path, static_cast<fs::perms>(mode));
        EXPECT_EQ(Rewrite(path), EError::Success);
        EXPECT_EQ(fs::status(path).permissions(), static_cast<fs::perms>(mode));
    }
}

TEST_F(KvWholeFileWriterTest, WhatCannotBeOpenedIsRefused)
{
    const std::string path = m_folder.Write("file", "old");
    struct Row
    {
        std::string path;
        EMode mode;
        EError error;
    };
    const Row rows[] = {
        {path, EMode::None, EError::ModeNotAllowed},
        {path, EMode::ReadBinary, EError::ModeNotAllowed},
        {path, EMode::AppendBinary, EError::ModeNotAllowed},
        {m_folder.Path(), EMode::WriteBinary, EError::NotOpened},
        {m_folder.Path("absent/file"), EMode::WriteBinary, EError::NotOpened},
        {path + "/below", EMode::WriteBinary, EError::NotOpened},
        {m_folder.Path(std::string(256, 'n')), EMode::WriteBinary, EError::NotOpened},
        {"", EMode::WriteBinary, EError::NotOpened},
    };
    for (const Row& row : rows) {
        CKvWholeFileWriter writer;
        EXPECT_EQ(writer.Open(ToString(row.path), row.mode), row.error) << row.path;
        EXPECT_EQ(writer.GetHandle(), nullptr);
        EXPECT_EQ(writer.Commit(), EError::CloseFailed);
    }
    // The longest name that the disk takes leaves no room for a temporary's.
    EXPECT_EQ(Rewrite(m_folder.Path(std::string(255, 'n'))), EError::Success);
    EXPECT_EQ(m_folder.Read("file"), "old");
    EXPECT_EQ(m_folder.Names(), (Names{"file", std::string(255, 'n')}));
}

}  // namespace
