#include "file/KvFileHandleCached.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>

#include "core/KvIdentifier.h"
#include "file/KvBigFileGenerator.h"
#include "file/KvFileOperations.h"
#include "file/KvFileSystemUnCached.h"
#include "tests/support/KvCompressedFiles.h"
#include "tests/support/KvFaultyDisk.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

using EError = EKvFileSystemError;
constexpr EKvFileSystemOpenMode kMode = EKvFileSystemOpenMode::ReadBinary;

/// Bytes that differ from place to place and can be compressed.
std::string Content(std::size_t size)
{
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i % 7 < 4 ? i * i >> 11 : i >> 6);
    return bytes;
}

/// A handle of a file that should give this content.
class CHandle : public CKvFileHandleCached
{
public:
    CHandle(const std::string& file, const std::string& content)
        : CKvFileHandleCached(nullptr, kMode), m_content(content), m_path(m_folder.Write("f", file))
    {
    }

    /// Makes the file a member of a registered archive, and the only one of its name.
    void MoveIntoArchive()
    {
        const TKvString<char> name = m_path.c_str(), archive = m_folder.Path("archive").c_str();
        CKvBigFileGenerator generator;
        EXPECT_TRUE(generator.AddFile(name, name, CKvIdentifier(name).GetCrc64()) &&
                    generator.Save(archive, false, false) && KvDeleteFile(name) &&
                    CKvFileSystemUnCached::AddBigFile(archive));
    }

    EError Open() { return CKvFileHandleCached::Open(m_path.c_str(), kMode, true); }
    using CKvFileHandleCached::SetCacheSize;

    /// Reads, and holds the bytes and the position against the content; gives what Read() did.
    int ReadRight(int size)
    {
        const int start = FilePos();
        std::vector<char> bytes(static_cast<std::size_t>(size));
        const int read = Read(bytes.data(), size);
        const int count = std::max(read, 0);
        EXPECT_TRUE(std::equal(bytes.begin(), bytes.begin() + count, m_content.begin() + start));
        EXPECT_EQ(FilePos(), start + count);
        return read;
    }

    /// The operations on the disk that reading one byte at each place takes.
    int CountOperations(const std::vector<int>& places)
    {
        const CKvFaultyDisk disk;
        for (const int place : places)
            EXPECT_TRUE(SeekStart(place) && ReadRight(1) == 1);
        return disk.GetCount();
    }

    /// Opens, reads at several places and closes; true when all of that went well.
    bool ReadAround()
    {
        const bool opened = Open() == EError::Success;
        bool complete = opened;
        for (const int place : {100, 8190, 40960, 0}) {
            const int few = ReadRight(40);
            EXPECT_TRUE(few == (opened ? 40 : 0) || few == kReadFailed);
            complete = ReadRight(9000) == 9000 && few == 40 && complete;
            EXPECT_TRUE(SeekStart(place) == opened && !SeekEnd(0));
        }
        return Close() == EError::Success && complete;
    }

private:
    CKvTemporaryFolder m_folder;
    const std::string& m_content;
    const std::string m_path;
};

/// Random operations beside a model that is nothing but a position.
void Exercise(const std::string& file, const std::string& content, int steps)
{
    CHandle handle(file, content);
    const int size = static_cast<int>(content.size());
    std::minstd_rand random(7);
    const auto below = [&random](int bound) { return static_cast<int>(random() >> 1) % bound; };
    std::array<int, 12> places = {};  // more than there are caches
    EXPECT_EQ(handle.Open(), EError::Success);
    for (int step = 0; step < steps && !testing::Test::HasFailure(); ++step) {
        int& place = places[random() % places.size()];
        if (below(5) == 0)  // at the border of a window, or anywhere
            place = below(2) != 0 ? below(30) * 8192 + below(5) - 2 : below(size + 200) - 100;
        handle.SetCacheSize(below(9000), below(200) - 1);
        handle.SeekStart(place);
        int expected = std::clamp(place, 0, size);
        if (below(5) == 0) {
            const int offset = below(10) != 0 ? below(4000) - 2000 : INT_MAX;
            handle.SeekCurrent(offset);
            expected = std::clamp(std::min(offset, size) + expected, 0, size);
        }
        EXPECT_EQ(handle.FilePos(), expected);
        const int wanted = below(8) == 0 ? below(20001) : below(700);
        EXPECT_EQ(handle.ReadRight(wanted), std::min(wanted, size - expected)) << size;
        EXPECT_EQ(handle.EndOfFile(), size - handle.FilePos() - 1);
        place = handle.FilePos();
    }
}

TEST(KvFileHandleCachedTest, RandomOperationsDeliverWhatTheFileHolds)
{
    for (const std::size_t size : {0U, 1U, 31U, 32U, 33U, 8191U, 8192U, 8193U, 20000U, 200001U}) {
        const std::string content = Content(size);
        Exercise(content, content, 3000);
        Exercise(KvCompressFile(content), content, 500);  // each way back expands from the start
    }
}

TEST(KvFileHandleCachedTest, WhatAWindowHoldsIsNotReadAgain)
{
    const std::string content = Content(200000);
    CHandle handle(content, content);
    ASSERT_EQ(handle.Open(), EError::Success);
    std::vector<int> inTurn;  // eight readers, each of four windows
    inTurn.reserve(content.size());
    for (int i = 0; i < 200000; ++i)
        inTurn.push_back(i % 8 * 25000 + i / 8);
    EXPECT_LE(handle.CountOperations(inTurn), 8 * 4 * 3);  // a seek, its check and a read each
    handle.CountOperations({9999, 20000, 40000, 60000, 80000, 100000, 120000, 140000});
    EXPECT_EQ(handle.CountOperations({9999, 10005, 9999, 60000, 148191}), 0);
    // The one that was read least recently makes room for a ninth.
    EXPECT_EQ(handle.CountOperations({160000}), 3);
    EXPECT_EQ(handle.CountOperations({40000, 140000, 9999, 60000, 20000}), 3);
}

TEST(KvFileHandleCachedTest, NeitherAFailingDiskNorACutFileMakesWrongBytes)
{
    const std::string content = Content(50000);
    const std::string packed = KvCompressFile(content);
    int runs = 0;
    for (int kind = 0; kind < 4; ++kind)
        for (const auto faults :
             {CKvFaultyDisk::EFaults::Once, CKvFaultyDisk::EFaults::FromThenOn}) {
            CHandle handle(kind % 2 == 0 ? content : packed, content);
            if (kind >= 2)
                handle.MoveIntoArchive();
            int failing = 0;
            for (bool failed = true; failed; ++runs) {
                const CKvFaultyDisk disk(++failing, faults);
                const bool complete = handle.ReadAround();
                failed = disk.HasFailed();
                EXPECT_TRUE(complete || failed) << failing;
            }
        }
    EXPECT_GE(runs, 90);
    for (std::size_t size = 37; size < packed.size(); size += size < 64 ? 1 : 997)
        EXPECT_FALSE(CHandle(packed.substr(0, size), content).ReadAround()) << size;
}

}  // namespace
