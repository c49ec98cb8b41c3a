#include "file/KvFileSystemUnCached.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/KvTemporaryFolder.h"

namespace {

using FileSystem = CKvFileSystemUnCached;
using EError = EKvFileSystemError;
using EMode = EKvFileSystemOpenMode;

TEST(KvFileSystemTest, WhatCannotBeOpenedIsRefusedAndStays)
{
    const CKvTemporaryFolder folder;
    folder.Write("file", "old");
    CKvFileHandle* handle = nullptr;
    const auto open = [&](const char* name, int mode) {
        return FileSystem::Open(handle, folder.Path(name).c_str(), EMode{mode}, true);
    };
    for (const int mode : {-1, 0, 7})
        EXPECT_EQ(open("file", mode), EError::ModeNotAllowed);
    EXPECT_EQ(open("absent", 1), EError::NotOpened);
    EXPECT_EQ(FileSystem::Close(handle), EError::NoHandle);
    EXPECT_EQ(open("file", 3), EError::Success);  // appends
    EXPECT_EQ(FileSystem::Write(handle, "+", 1), 1);
    EXPECT_EQ(FileSystem::Close(handle), EError::Success);
    EXPECT_EQ(folder.Read("file"), "old+");
}

TEST(KvFileSystemTest, SeeksThatCannotBeLeaveThePosition)
{
    const CKvTemporaryFolder folder;
    CKvFileHandle* handle = nullptr;
    const std::string path = folder.Write("file", "0123456789");
    ASSERT_EQ(FileSystem::Open(handle, path.c_str(), EMode::ReadBinary, false), EError::Success);
    char bytes[3] = {};
    EXPECT_TRUE(FileSystem::SeekFromEnd(handle, -2));
    EXPECT_TRUE(FileSystem::SeekFromStart(handle, -1));
    EXPECT_TRUE(FileSystem::SeekFromCurrent(handle, 1));
    EXPECT_EQ(FileSystem::GetSize(handle), 10);
    EXPECT_EQ(FileSystem::AsyncRead(handle, bytes, 2), EError::ReadFailed);
    EXPECT_STREQ(bytes, "9");
    FileSystem::Close(handle);
    EXPECT_FALSE(FileSystem::SeekFromStart(nullptr, 0));
}

}  // namespace
