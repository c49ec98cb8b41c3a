#include "file/KvCompressedFileReader.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <climits>
#include <string>

#include "file/KvFile.h"
#include "file/KvFileHandleCached.h"
#include "tests/support/KvCompressedFiles.h"
#include "tests/support/KvDocumentedBytes.h"
#include "tests/support/KvTemporaryFolder.h"
#include "tests/support/KvUnprivileged.h"

namespace {

const std::string kRefused = "<null>";
constexpr int kRefusedSize = -1;
constexpr EKvFileSystemOpenMode kMode = EKvFileSystemOpenMode::ReadBinary;

class KvCompressedFileReaderTest : public testing::Test
{
protected:
    void Open(CKvFile& file, const std::string& bytes) const
    {
        const std::string path = m_folder.Write("file", bytes);
        ASSERT_EQ(file.Open(path.c_str(), kMode, false), EKvFileSystemError::Success);
    }

    std::string ReadWhole(const std::string& bytes) const
    {
        CKvFile file;
        Open(file, bytes);
        return KvReadWhole(file);
    }

    /// What a reader announces.
    int Announced(const std::string& bytes) const
    {
        CKvFile file;
        Open(file, bytes);
        int size = -1;
        const CKvCompressedFileReader reader(&file, size);
        EXPECT_TRUE(size == 0 || !reader.IsRefused());
        return reader.IsRefused() ? kRefusedSize : size;
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
    }
}

TEST_F(KvCompressedFileReaderTest, HeadersThatClaimWhatCannotComeAreRefusedAtOnce)
{
    const std::string block = KvCompressBlock(m_words);
    const std::string bare = block.substr(0, kKvLzmaPropertiesSize);
    const std::string large = block + std::string(400000, 'x');
    EXPECT_EQ(Announced(KvCompressedFile(block, 5000)), 5000);
    EXPECT_EQ(Announced(KvCompressedFile(bare + '\0', 7100)), 7100);
    EXPECT_EQ(Announced(KvCompressedFile(bare + '\0', 7101)), kRefusedSize);
    EXPECT_EQ(Announced(KvCompressedFile(bare, UINT_MAX)), kRefusedSize);
    EXPECT_EQ(Announced(KvCompressedFile(large, 0x80000000U)), kRefusedSize);
    EXPECT_EQ(Announced(KvCompressedFile('\xFF' + block.substr(1), 10)), kRefusedSize);
    EXPECT_EQ(ReadWhole(KvCompressedFile(block, 100)), m_words.substr(0, 100));
    EXPECT_EQ(ReadWhole(KvCompressedFile(block, 5000)), kRefused);
}

TEST_F(KvCompressedFileReaderTest, ADictionaryLargerThanTheOutputIsNotAllocated)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer's own memory exceeds any limit";
#endif
    std::string file = m_file + std::string(1'000'000, 'x');  // could hold more than 4 GiB
    file.replace(kKvCompressedHeaderSize + 1, 4, "\xFF\xFF\xFF\xFF");
    CKvFile opened;
    Open(opened, file);
    CKvFileHandleCached cached(m_folder.Path("file").c_str(), kMode);
    const auto readInOneGibibyte = [&] {
        const rlimit limit = {1U << 30, 1U << 30};
        char byte = 0;
        return setrlimit(RLIMIT_AS, &limit) == 0 && KvReadWhole(opened) == m_words &&
                       cached.Open(cached.GetName(), kMode, false) == EKvFileSystemError::Success &&
                       cached.Read(&byte, 1) == 1
                   ? 0
                   : 1;
    };
    EXPECT_EQ(KvRunUnprivileged(readInOneGibibyte), 0);
}

TEST_F(KvCompressedFileReaderTest, ADamagedFileGivesAllThatItsHeaderAnnouncesOrNull)
{
    ASSERT_EQ(m_file.size(), 170U);
    for (std::size_t size = 37; size < m_file.size(); ++size) {
        const std::string read = ReadWhole(m_file.substr(0, size));
        EXPECT_TRUE(read == kRefused || (read == m_words && m_file.size() - size < 5)) << size;
    }
    for (std::size_t i = 0; i < m_file.size(); ++i) {
        std::string damaged = m_file;
        damaged[i] = static_cast<char>(~damaged[i]);
        const std::string read = ReadWhole(damaged);
        const bool isPlain = i < kKvCompressedMagicSize;
        EXPECT_TRUE(isPlain
                        ? read == damaged
                        : read == kRefused || read.size() == KvGetUncompressedSize(damaged.data()))
            << i;
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
