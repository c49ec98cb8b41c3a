#include "file/KvCompressedFileReader.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <climits>
#include <memory>
#include <random>
#include <string>

#include "file/KvFile.h"
#include "tests/support/KvCompressedFiles.h"
#include "tests/support/KvDocumentedBytes.h"
#include "tests/support/KvFaultyDisk.h"
#include "tests/support/KvTemporaryFolder.h"
#include "tests/support/KvUnprivileged.h"

namespace {

const std::string kRefused = "<null>";

class KvCompressedFileReaderTest : public testing::Test
{
protected:
    void Open(CKvFile& file, const std::string& bytes) const
    {
        const std::string path = m_folder.Write("file", bytes);
        ASSERT_EQ(file.Open(path.c_str(), EKvFileSystemOpenMode::ReadBinary, false),
                  EKvFileSystemError::Success);
    }

    static std::string ReadWhole(CKvFile& file)
    {
        int size = -1;
        const std::unique_ptr<unsigned char[]> bytes(
            static_cast<unsigned char*>(file.ReadEntireFile(size)));
        if (bytes == nullptr)
            return size == 0 ? kRefused : "<null with a size>";
        return {reinterpret_cast<const char*>(bytes.get()), static_cast<std::size_t>(size)};
    }

    std::string ReadWhole(const std::string& bytes) const
    {
        CKvFile file;
        Open(file, bytes);
        return ReadWhole(file);
    }

    /// The bytes that a reader announces, -1 when it refuses.
    int Announced(const std::string& bytes) const
    {
        CKvFile file;
        Open(file, bytes);
        int size = -1;
        const CKvCompressedFileReader reader(&file, size);
        EXPECT_TRUE(size == 0 || !reader.IsRefused());
        return reader.IsRefused() ? -1 : size;
    }

    /// Numbers in words, so that neighbours differ.
    static std::string Words(int count)
    {
        std::string words;
        for (int i = 0; i < count; ++i)
            words.append("word ").append(std::to_string(i));
        return words;
    }

    const std::string m_words = Words(100);
    const std::string m_file = KvCompressFile(m_words);
    CKvTemporaryFolder m_folder;
};

TEST_F(KvCompressedFileReaderTest, FilesArePassedOnOncePlainOrCompressedInPiecesOfAnySize)
{
    const std::string large = Words(20000);
    for (const std::string& bytes : {std::string(10, 'p'), std::string(37, 'p'), large}) {
        for (const std::string& stored : {bytes, KvCompressFile(bytes)}) {
            EXPECT_TRUE(ReadWhole(stored) == bytes);
            for (const int piece : {1, 7, 8192, INT_MAX}) {
                CKvFile file;
                Open(file, stored);
                int size = 0;
                CKvCompressedFileReader reader(&file, size);
                ASSERT_EQ(static_cast<std::size_t>(size), bytes.size());
                std::string out(bytes.size(), '?');
                int delivered = 0;
                while (const int step = reader.Read(out.data() + delivered, piece))
                    delivered += step;
                EXPECT_TRUE(out == bytes) << piece;
                EXPECT_EQ(reader.Read(out.data(), 1), 0);
            }
        }
    }
    EXPECT_EQ(ReadWhole(KvCompressFile("")), "");
    EXPECT_EQ(ReadWhole(m_file.substr(0, kKvCompressedHeaderSize) + "plai"),
              m_file.substr(0, kKvCompressedHeaderSize) + "plai");
}

TEST_F(KvCompressedFileReaderTest, SeekingDropsWhatIsAheadAndIgnoresWhatIsBehind)
{
    for (const std::string& stored : {m_words, m_file}) {
        CKvFile file;
        Open(file, stored);
        int size = 0;
        CKvCompressedFileReader reader(&file, size);
        char byte = 0;
        int position = 0;
        for (const int pos : {3, 1, 300, 299, INT_MIN}) {
            reader.SeekFromStart(pos);
            position = std::max(pos, position);
            ASSERT_EQ(reader.Read(&byte, 1), 1);
            EXPECT_EQ(byte, m_words[static_cast<std::size_t>(position++)]) << pos;
        }
        reader.SeekFromStart(INT_MAX);
        EXPECT_EQ(reader.Read(&byte, 1), 0);
    }
}

TEST_F(KvCompressedFileReaderTest, HeadersThatClaimWhatCannotComeAreRefusedAtOnce)
{
    const std::string block = KvCompressBlock(m_words);
    const std::string bare = block.substr(0, kKvLzmaPropertiesSize);
    const struct
    {
        const char* what;
        std::string file;
        int announced;
    } rows[] = {
        {"less than there is", KvCompressedFile(block, 100), 100},
        {"more than there is", KvCompressedFile(block, 5000), 5000},
        {"the most for one byte", KvCompressedFile(bare + '\0', 7100), 7100},
        {"more than one byte can give", KvCompressedFile(bare + '\0', 7101), -1},
        {"4 GiB in 37 bytes", KvCompressedFile(bare, UINT_MAX), -1},
        {"2 GiB in a large file", KvCompressedFile(block + std::string(400000, 'x'), 0x80000000U),
         -1},
        {"properties that no encoder has", KvCompressedFile('\xFF' + block.substr(1), 10), -1},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Announced(row.file), row.announced) << row.what;
    EXPECT_EQ(ReadWhole(rows[0].file), m_words.substr(0, 100));
    EXPECT_EQ(ReadWhole(rows[1].file), kRefused);
}

TEST_F(KvCompressedFileReaderTest, ADictionaryLargerThanTheOutputIsNotAllocated)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer's own memory exceeds any limit";
#endif
    std::string file = m_file;
    file.replace(kKvCompressedHeaderSize + 1, 4, "\xFF\xFF\xFF\xFF");
    CKvFile opened;
    Open(opened, file);
    EXPECT_EQ(KvRunUnprivileged([&] {
                  const rlimit gibibyte = {1U << 30, 1U << 30};
                  return setrlimit(RLIMIT_AS, &gibibyte) == 0 && ReadWhole(opened) == m_words ? 0
                                                                                              : 1;
              }),
              0);
}

TEST_F(KvCompressedFileReaderTest, ADamagedFileGivesAllThatItsHeaderAnnouncesOrNull)
{
    int cuts = 0;
    for (std::size_t size = 37; size < m_file.size(); ++size, ++cuts) {
        const std::string read = ReadWhole(m_file.substr(0, size));
        EXPECT_TRUE(read == kRefused || (read == m_words && m_file.size() - size < 5)) << size;
    }
    EXPECT_EQ(cuts, 133);

    int flips = 0;
    int caught = 0;
    for (std::size_t i = 0; i < m_file.size(); ++i, ++flips) {
        std::string damaged = m_file;
        damaged[i] = static_cast<char>(~damaged[i]);
        const std::string read = ReadWhole(damaged);
        if (i < kKvCompressedMagicSize) {
            EXPECT_EQ(read, damaged) << i;
        } else if (read == kRefused) {
            ++caught;
        } else {
            EXPECT_EQ(read.size(), KvGetUncompressedSize(damaged.data())) << i;
        }
    }
    EXPECT_EQ(flips, 170);
    EXPECT_GT(caught, 100);
}

TEST_F(KvCompressedFileReaderTest, ADiskThatFailsGivesNullAndNeverOtherBytes)
{
    std::minstd_rand random(1);
    std::string bytes(60000, '\0');
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random() >> 7); });
    const std::string stored = KvCompressFile(bytes);
    ASSERT_GT(stored.size(), 3 * 16384U);
    for (const auto faults : {CKvFaultyDisk::EFaults::Once, CKvFaultyDisk::EFaults::FromThenOn}) {
        int failing = 0;
        for (bool failed = true; failed;) {
            CKvFile file;
            Open(file, stored);
            const CKvFaultyDisk disk(++failing, faults);
            const std::string read = ReadWhole(file);
            failed = disk.HasFailed();
            EXPECT_TRUE(read == bytes || (failed && read == kRefused)) << failing;
        }
        EXPECT_GE(failing, 10);
    }
}

TEST_F(KvCompressedFileReaderTest, TheDocumentedExampleIsWhatIsWrittenAndRead)
{
    const std::string file =
        KvDocumentedBytes(std::string(KV_SOURCE_PATH) + "/docs/formats/compressed-file.md");
    EXPECT_EQ(file, KvCompressFile("door door door door"));
    EXPECT_EQ(ReadWhole(file), "door door door door");
}

}  // namespace
