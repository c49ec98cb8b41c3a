#include "file/KvFileSystemUnCached.h"

#include <gtest/gtest.h>

#include <climits>
#include <filesystem>
#include <string>

#include "tests/support/KvFaultyDisk.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

using FileSystem = CKvFileSystemUnCached;
using EError = EKvFileSystemError;
using EMode = EKvFileSystemOpenMode;
using EStatus = CKvFileHandle::EStatus;

class KvFileSystemTest : public testing::Test
{
protected:
    void TearDown() override { FileSystem::SetSwapDWORDOnWrite(false); }

    static CKvFileHandle* Open(const std::string& path, EMode mode)
    {
        CKvFileHandle* handle = nullptr;
        EXPECT_EQ(FileSystem::Open(handle, TKvString<char>(path.c_str()), mode, false),
                  EError::Success);
        return handle;
    }

    CKvTemporaryFolder m_folder;
};

TEST_F(KvFileSystemTest, OpeningGivesAHandleOrTheCodeOfTheFailure)
{
    m_folder.Write("file", "old");
    struct Row
    {
        const char* name;
        int mode;
        EError error;
    };
    const Row rows[] = {
        {"file", -1, EError::ModeNotAllowed}, {"file", 0, EError::ModeNotAllowed},
        {"file", 7, EError::ModeNotAllowed},  {"absent", 1, EError::NotOpened},
        {"absent", 4, EError::NotOpened},     {"absent/file", 2, EError::NotOpened},
        {".", 1, EError::NotOpened},          {".", 2, EError::NotOpened},
        {"file", 1, EError::Success},         {"file", 4, EError::Success},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.name) + " in mode " + std::to_string(row.mode));
        CKvFileHandle* handle = nullptr;
        const TKvString<char> path(m_folder.Path(row.name).c_str());
        EXPECT_EQ(FileSystem::Open(handle, path, static_cast<EMode>(row.mode), true), row.error);
        EXPECT_EQ(handle != nullptr, row.error == EError::Success);
        EXPECT_EQ(FileSystem::Close(handle),
                  handle != nullptr ? EError::Success : EError::NoHandle);
        EXPECT_EQ(handle, nullptr);
    }
    EXPECT_EQ(m_folder.Names(), std::vector<std::string>{"file"});
    EXPECT_EQ(m_folder.Read("file"), "old");
}

TEST_F(KvFileSystemTest, WritingStartsAnewAndAppendingGoesOn)
{
    struct Row
    {
        EMode mode;
        const char* content;
    };
    const Row rows[] = {{EMode::AppendBinary, "+"},
                        {EMode::AppendText, "++"},
                        {EMode::WriteBinary, "+"},
                        {EMode::AppendBinary, "++"},
                        {EMode::WriteText, "+"}};
    for (const Row& row : rows) {
        CKvFileHandle* handle = Open(m_folder.Path("file"), row.mode);
        char byte = 0;
        EXPECT_EQ(FileSystem::Read(handle, &byte, 1), 0);
        EXPECT_EQ(FileSystem::Write(handle, "+", 1), 1);
        EXPECT_EQ(FileSystem::Close(handle), EError::Success);
        EXPECT_EQ(m_folder.Read("file"), row.content);
    }
}

TEST_F(KvFileSystemTest, SeeksMoveThePositionAndKeepItWhereTheyCannot)
{
    CKvFileHandle* handle = Open(m_folder.Write("file", "0123456789"), EMode::ReadBinary);
    struct Row
    {
        bool (*seek)(CKvFileHandle*, int);
        int offset;
        int position;
    };
    const Row rows[] = {
        {&FileSystem::SeekFromStart, 7, 7},    {&FileSystem::SeekFromCurrent, -4, 3},
        {&FileSystem::SeekFromCurrent, -4, 3}, {&FileSystem::SeekFromEnd, 10, 20},
        {&FileSystem::SeekFromStart, -1, 20},  {&FileSystem::SeekFromEnd, -2, 8}};
    for (const Row& row : rows) {
        EXPECT_TRUE(row.seek(handle, row.offset));
        EXPECT_EQ(FileSystem::GetSize(handle), 10);
        EXPECT_EQ(FileSystem::GetPos(handle), row.position);
    }
    char bytes[4] = {};
    EXPECT_EQ(FileSystem::Read(handle, bytes, 4), 2);
    EXPECT_STREQ(bytes, "89");
    EXPECT_EQ(FileSystem::Read(handle, bytes, -1), 0);
    FileSystem::Close(handle);
}

TEST_F(KvFileSystemTest, AFileThatIntsCannotMeasureHasNoSize)
{
    const std::string path = m_folder.Write("sparse", "");
    struct Row
    {
        std::uintmax_t size;
        int reported;
        int endPosition;
    };
    const std::uintmax_t limit = INT_MAX;
    const Row rows[] = {{limit, INT_MAX, INT_MAX}, {limit + 1, 0, -1}, {2 * limit + 5, 0, -1}};
    for (const Row& row : rows) {
        std::filesystem::resize_file(path, row.size);
        CKvFileHandle* handle = Open(path, EMode::ReadBinary);
        EXPECT_EQ(FileSystem::GetSize(handle), row.reported) << row.size;
        FileSystem::SeekFromEnd(handle, 0);
        EXPECT_EQ(FileSystem::GetPos(handle), row.endPosition) << row.size;
        FileSystem::Close(handle);
    }
}

TEST_F(KvFileSystemTest, AsynchronousOperationsRefuseAHandleThatIsBusyOrMissing)
{
    CKvFileHandle* handle = Open(m_folder.Write("file", "abc"), EMode::ReadBinary);
    char bytes[3] = {};
    EXPECT_EQ(FileSystem::AsyncRead(handle, bytes, 2), EError::Success);
    EXPECT_EQ(FileSystem::AsyncRead(handle, bytes, 2), EError::ReadFailed);
    EXPECT_EQ(FileSystem::AsyncWrite(handle, bytes, 2), EError::WriteFailed);
    EXPECT_EQ(handle->GetStatus(), EStatus::Idle);
    handle->SetStatus(EStatus::Writing);
    EXPECT_EQ(FileSystem::AsyncRead(handle, bytes, 1), EError::Busy);
    EXPECT_EQ(FileSystem::AsyncWrite(handle, bytes, 1), EError::Busy);
    FileSystem::Close(handle);

    EXPECT_EQ(FileSystem::AsyncRead(nullptr, bytes, 1), EError::NoHandle);
    EXPECT_EQ(FileSystem::AsyncWrite(nullptr, bytes, 1), EError::NoHandle);
    EXPECT_EQ(FileSystem::Write(nullptr, bytes, 1), 0);
    EXPECT_EQ(FileSystem::GetPos(nullptr), -1);
    EXPECT_EQ(FileSystem::GetSize(nullptr), 0);
    EXPECT_FALSE(FileSystem::SeekFromStart(nullptr, 0));
}

TEST_F(KvFileSystemTest, TheSwapFlagReversesTheWholeWordsOfEachWrite)
{
    struct Row
    {
        const char* data;
        const char* stored;
    };
    const Row rows[] = {
        {"1234", "4321"}, {"123456", "432156"}, {"12", "12"}, {"12345678", "43218765"}, {"1", "1"}};
    FileSystem::SetSwapDWORDOnWrite(true);
    for (const Row& row : rows) {
        CKvFileHandle* handle = Open(m_folder.Path("out"), EMode::WriteBinary);
        const int size = static_cast<int>(std::string(row.data).size());
        EXPECT_EQ(FileSystem::Write(handle, row.data, size), size);
        EXPECT_EQ(FileSystem::Write(handle, row.data, -1), 0);
        EXPECT_EQ(FileSystem::Close(handle), EError::Success);
        EXPECT_EQ(m_folder.Read("out"), row.stored);
    }
}

TEST_F(KvFileSystemTest, ALostWriteShowsWhenTheFileIsClosed)
{
    int failing = 0;
    for (bool failed = true; failed;) {
        SCOPED_TRACE(++failing);
        CKvFileHandle* handle = Open(m_folder.Path("out"), EMode::WriteBinary);
        CKvFaultyDisk disk(failing, CKvFaultyDisk::EFaults::Once);
        for (int i = 1; i <= 3; ++i)
            EXPECT_EQ(FileSystem::Write(handle, "abc", 3), i == failing ? 0 : 3);
        const EError error = FileSystem::Close(handle);
        failed = disk.HasFailed();
        EXPECT_EQ(error, failed ? EError::CloseFailed : EError::Success);
        EXPECT_EQ(handle, nullptr);
    }
    EXPECT_EQ(failing, 5);
    EXPECT_EQ(m_folder.Read("out"), "abcabcabc");
}

}  // namespace
