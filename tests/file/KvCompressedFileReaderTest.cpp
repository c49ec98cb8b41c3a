#include "file/KvCompressedFileReader.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <climits>
#include <string>

#include "file/KvFile.h"
#include "tests/support/KvCompressedFiles.h"
#include "tests/support/KvDocumentedBytes.h"
#include "tests/support/KvTemporaryFolder.h"
#include "tests/support/KvUnprivileged.h"

namespace {

const std::string kRefused = "<null>";
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

    /// What a reader announces; -1 when it refuses, which announces nothing.
    int Announced(const std::string& bytes) const
    {
        CKvFile file;
        Open(file, bytes);
        int size = -1;
        const CKvCompressedFileReader reader(&file, size);
        return reader.IsRefused() ? size - 1 : size;
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
    for (const std::string& stored : {m_words, m_file})
        for (const int piece : {1, 7, 8192, INT_MAX}) {
            CKvFile file;
            Open(file, stored);
            int size = 0;
            CKvCompressedFileReader reader(&file, size);
            ASSERT_EQ(static_cast<std::size_t>(size), m_words.size());
            std::string out(m_words.size(), '?');
            int delivered = 0;
            while (const int step = reader.Read(out.data() + delivered, piece)) {
                delivered += step;
                reader.SeekFromStart(delivered / 2);  // behind, and so ignored
            }
            EXPECT_EQ(out, m_words) << piece;
        }
    EXPECT_EQ(ReadWhole(KvCompressFile("")), "");
    const std::string withoutProperties = m_file.substr(0, kKvCompressedHeaderSize) + "plai";
    EXPECT_EQ(ReadWhole(withoutProperties), withoutProperties);
}

TEST_F(KvCompressedFileReaderTest, HeadersThatClaimWhatCannotComeAreRefusedAtOnce)
{
    const std::string block = KvCompressBlock(m_words);
    const std::string bare = block.substr(0, kKvLzmaPropertiesSize);
    const std::string large = block + std::string(400000, 'x');
    EXPECT_EQ(Announced(KvCompressedFile(block, 5000)), 5000);
    EXPECT_EQ(Announced(KvCompressedFile(bare + '\0', 7100)), 7100);
    EXPECT_EQ(Announced(KvCompressedFile(bare + '\0', 7101)), -1);
    EXPECT_EQ(Announced(KvCompressedFile(large, 0x80000000U)), -1);
    EXPECT_EQ(Announced(KvCompressedFile('\xFF' + block.substr(1), 10)), -1);
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
    const auto readInOneGibibyte = [&] {
        const rlimit limit = {1U << 30, 1U << 30};
        return setrlimit(RLIMIT_AS, &limit) == 0 && KvReadWhole(opened) == m_words ? 0 : 1;
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
