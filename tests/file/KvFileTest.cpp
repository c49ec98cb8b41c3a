#include "file/KvFile.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <climits>
#include <filesystem>
#include <string>
#include <utility>

#include "file/KvFileSystemUnCached.h"
#include "tests/support/KvCompressedFiles.h"
#include "tests/support/KvFaultyDisk.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

using EError = EKvFileSystemError;
using EMode = EKvFileSystemOpenMode;

class KvFileTest : public testing::Test
{
protected:
    void Open(CKvFile& file, EMode mode = EMode::ReadBinary) const
    {
        const TKvString<char> path = m_folder.Path("file").c_str();
        EXPECT_EQ(file.Open(path, mode, false), EError::Success);
    }

    CKvTemporaryFolder m_folder;
};

TEST_F(KvFileTest, TypedValuesAreStoredInTheHostsOrderAndMayBeCutShort)
{
    CKvFile file;
    Open(file, EMode::WriteBinary);
    file.WriteS8(0x1FE);
    file.WriteS16(-300);
    file.WriteF32(1.5F);
    file.WriteU64(0xFEDCBA9876543210);
    EXPECT_EQ(file.Close(), EError::Success);
    EXPECT_EQ(m_folder.Read("file"),
              std::string("\xFE\xD4\xFE\0\0\xC0\x3F\x10\x32\x54\x76\x98\xBA\xDC\xFE", 15));

    Open(file);
    file.SeekFromEnd(-3);
    unsigned int value = 0xFFFFFFFF;
    EXPECT_EQ(file.ReadU32(value), EError::ReadFailed);
    EXPECT_EQ(value, 0xFEDCBAU);
    file.SeekFromEnd(-2);
    EXPECT_TRUE(file.SeekFromStart(-1) && file.SeekFromCurrent(1) && file.GetPos() == 14);
}

TEST_F(KvFileTest, WhatCannotBeOpenedIsRefusedAndWhatIsAppendedToStays)
{
    const TKvString<char> path = m_folder.Write("file", "old").c_str();
    CKvFile file;
    for (const int mode : {-1, 0, 7})
        EXPECT_EQ(file.Open(path, EMode{mode}, true), EError::ModeNotAllowed);
    EXPECT_EQ(file.Open(path + "absent", EMode::ReadBinary, true), EError::NotOpened);
    Open(file, EMode{3});
    EXPECT_EQ(file.Write("+", 1), 1);
    EXPECT_EQ(file.Write("-", -1), 0);
    EXPECT_EQ(file.Close(), EError::Success);
    EXPECT_EQ(m_folder.Read("file"), "old+");
}

TEST_F(KvFileTest, WithoutMemoryForItsSwappedCopyAWriteFailsTheFile)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizer's own memory exceeds any limit";
#endif
    CKvFile file;
    Open(file, EMode::WriteBinary);
    rlimit before = {};
    getrlimit(RLIMIT_AS, &before);
    const rlimit oneGibibyte = {1U << 30, before.rlim_max};
    setrlimit(RLIMIT_AS, &oneGibibyte);
    CKvFileSystemUnCached::SetSwapDWORDOnWrite(true);
    EXPECT_EQ(file.Write("never read", INT_MAX), 0);
    CKvFileSystemUnCached::SetSwapDWORDOnWrite(false);
    setrlimit(RLIMIT_AS, &before);
    EXPECT_EQ(file.Close(), EError::CloseFailed);
}

TEST_F(KvFileTest, StringsEndAtAZeroTheEndOfTheFileOrTheirGreatestLength)
{
    const auto read = [&](const std::string& content, EError error) {
        m_folder.Write("file", content);
        CKvFile file;
        Open(file);
        TKvString<char> text("before");
        EXPECT_EQ(file.ReadString(text), error);
        return std::string(text.GetText());
    };
    const std::string longest(CKvFile::kLongestString, 's');
    EXPECT_EQ(read(longest + '\0', EError::Success), longest);
    EXPECT_EQ(read(longest + "s", EError::ReadFailed), "");
    EXPECT_EQ(read("abc", EError::ReadFailed), "abc");
}

TEST_F(KvFileTest, OneObjectClosesTheHandleWhateverSharesIt)
{
    m_folder.Write("file", "abc");
    const CKvFaultyDisk disk;
    {
        CKvFile owner;
        Open(owner);
        EXPECT_EQ(owner.Open("file", EMode::ReadBinary, false), EError::AlreadyOpen);
        {
            const CKvFile copy(owner);
            owner = copy;
        }
        CKvFile other;
        Open(other);
        other = owner;  // closes what it had opened
    }
    EXPECT_EQ(disk.GetCount(), 4);  // twice open, twice close
}

TEST_F(KvFileTest, AFileIsReadWholeUnlessItIsTooLarge)
{
    for (const std::string& content : {std::string(), std::string("a\0b\r\n", 5)}) {
        CKvFile file;
        m_folder.Write("file", content);
        Open(file);
        EXPECT_EQ(KvReadWhole(file), content);
    }
    for (const std::uintmax_t size : {std::uintmax_t{INT_MAX} + 1, (std::uintmax_t{1} << 32) + 5}) {
        CKvFile tooLarge;
        std::filesystem::resize_file(m_folder.Path("file"), size);
        Open(tooLarge);
        EXPECT_EQ(KvReadWhole(tooLarge), "<null>");
    }
}

TEST_F(KvFileTest, AFileThatCannotBeMeasuredHasNoSize)
{
    m_folder.Write("file", "content");
    CKvFile file;
    Open(file);
    int n = 0;
    for (bool failed = true; failed;) {
        CKvFaultyDisk disk(++n, CKvFaultyDisk::EFaults::Once);
        const int size = file.GetSize();
        failed = disk.HasFailed();
        EXPECT_EQ(size, failed ? 0 : 7) << n;
    }
    EXPECT_EQ(n, 5);
}

}  // namespace
