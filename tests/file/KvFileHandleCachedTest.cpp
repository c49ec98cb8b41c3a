#include "file/KvFileHandleCached.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <filesystem>
#include <numeric>
#include <random>

#include "tests/support/KvFaultyDisk.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

using EError = EKvFileSystemError;

class CHandle : public CKvFileHandleCached
{
public:
    explicit CHandle(const std::string& path)
        : CKvFileHandleCached(path.c_str(), EKvFileSystemOpenMode::ReadBinary)
    {
    }

    EError Open() { return CKvFileHandleCached::Open(GetName(), GetOpenMode(), false); }
    using CKvFileHandleCached::SetCacheSize;

    /// What a read delivers; \a result is what it returned.
    std::string Bytes(int size, int& result)
    {
        std::string bytes(static_cast<std::size_t>(size), '?');
        result = Read(bytes.data(), size);
        return bytes.substr(0, static_cast<std::size_t>(std::max(result, 0)));
    }
};

/// Bytes that differ from place to place and can be compressed.
std::string Content(int size)
{
    std::minstd_rand random(1);
    std::string bytes;
    while (bytes.size() < static_cast<std::size_t>(size))
        bytes.append(1 + random() % 9, static_cast<char>(random() % 200));
    return bytes.substr(0, static_cast<std::size_t>(size));
}

class KvFileHandleCachedTest : public testing::Test
{
protected:
    CKvTemporaryFolder m_folder;
};

/// Random operations beside a model that is nothing but a position.
void ExpectBehavesAsItsContent(const std::string& path, const std::string& content, int steps)
{
    std::minstd_rand random(7);
    const auto below = [&random](int bound) { return static_cast<int>(random() % bound); };
    const int size = static_cast<int>(content.size());
    std::int64_t position = 0;
    std::vector<int> places(12);
    CHandle handle(path);
    ASSERT_EQ(handle.Open(), EError::Success);
    for (int step = 0; step < steps; ++step) {
        int& place = places[random() % places.size()];
        if (below(20) == 0)
            handle.SetCacheSize(below(9000), below(10) - 1);
        switch (below(6)) {
            case 0:  // at a border of a window, or anywhere
                position = below(2) != 0 ? below(size / 8192 + 2) * 8192 + below(5) - 2
                                         : below(size + 200) - 100;
                handle.SeekStart(static_cast<int>(position));
                break;
            case 1: {
                const int extremes[] = {INT_MIN, INT_MAX, -8192, 8192};
                const int offset = below(10) == 0 ? extremes[below(4)] : below(4001) - 2000;
                position += offset;
                handle.SeekCurrent(offset);
                break;
            }
            default:  // read on at one of more places than there are caches
                position = place;
                handle.SeekStart(place);
        }
        position = std::clamp<std::int64_t>(position, 0, size);
        const int wanted = below(8) == 0 ? below(20001) : below(700);
        int read = 0;
        const std::string bytes = handle.Bytes(wanted, read);
        const auto expected =
            content.substr(static_cast<std::size_t>(position), static_cast<std::size_t>(wanted));
        ASSERT_EQ(read, static_cast<int>(expected.size())) << "step " << step;
        ASSERT_TRUE(bytes == expected) << "step " << step;
        position += read;
        ASSERT_EQ(handle.FilePos(), position);
        ASSERT_EQ(handle.EndOfFile(), size - position - 1);
        place = static_cast<int>(below(40) == 0 ? below(size + 1) : position);
    }
    EXPECT_EQ(handle.GetFileLength(), size);
    EXPECT_EQ(handle.Close(), EError::Success);
}

TEST_F(KvFileHandleCachedTest, RandomOperationsDeliverWhatTheFileHolds)
{
    for (const int size : {0, 1, 31, 32, 33, 8191, 8192, 8193, 20000, 200001}) {
        SCOPED_TRACE(size);
        const std::string content = Content(size);
        ExpectBehavesAsItsContent(m_folder.Write("plain", content), content, 3000);
    }
}

/// Reads one byte at each place and gives the operations on the disk that this took.
int CountOperations(CHandle& handle, const std::vector<int>& places)
{
    const CKvFaultyDisk disk;
    int read = 0;
    for (const int place : places) {
        handle.SeekStart(place);
        handle.Bytes(1, read);
        EXPECT_EQ(read, 1);
    }
    return disk.GetCount();
}

TEST_F(KvFileHandleCachedTest, WhatAWindowHoldsIsNotReadAgain)
{
    constexpr int kSize = 200000;
    const std::string content = Content(kSize);
    CHandle handle(m_folder.Write("file", content));
    ASSERT_EQ(handle.Open(), EError::Success);
    std::vector<int> forwards(kSize);
    std::iota(forwards.begin(), forwards.end(), 0);
    constexpr int kMove = 2;  // seek and check
    EXPECT_EQ(CountOperations(handle, forwards), kMove + 25);

    std::vector<int> interleaved;
    for (int i = 0; i < kSize / 8; ++i)
        for (int stream = 0; stream < 8; ++stream)
            interleaved.push_back(stream * kSize / 8 + i);
    EXPECT_LE(CountOperations(handle, interleaved), 8 * 4 * (kMove + 1));

    const std::vector<int> eight = {9999, 20000, 40000, 60000, 80000, 100000, 120000, 140000};
    CountOperations(handle, eight);
    EXPECT_EQ(CountOperations(handle, {9999, 10005, 9999, 60000, 148191}), 0);
    // The one that was used least recently makes room for a ninth.
    EXPECT_EQ(CountOperations(handle, {160000}), kMove + 1);
    EXPECT_EQ(CountOperations(handle, {40000, 140000, 9999, 60000}), 0);
    EXPECT_EQ(CountOperations(handle, {20000}), kMove + 1);
}

}  // namespace
