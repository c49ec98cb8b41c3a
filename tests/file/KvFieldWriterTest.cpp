#include "file/KvFieldWriter.h"

#include <gtest/gtest.h>

#include <string>

#include "file/KvFileSystemUnCached.h"
#include "tests/support/KvFaultyDisk.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

using FileSystem = CKvFileSystemUnCached;
using EError = EKvFileSystemError;

class KvFieldWriterTest : public testing::Test
{
protected:
    void TearDown() override { FileSystem::SetSwapDWORDOnWrite(false); }

    /// Has \a fill write to a new file and gives the file's bytes; "<failed>" when closing failed.
    template <class Fill>
    std::string Write(bool bigEndian, Fill fill)
    {
        CKvFileHandle* handle = nullptr;
        EXPECT_EQ(FileSystem::Open(handle, TKvString<char>(m_folder.Path("out").c_str()),
                                   EKvFileSystemOpenMode::WriteBinary, false),
                  EError::Success);
        {
            CKvFieldWriter writer(handle, bigEndian);
            fill(writer);
        }
        return FileSystem::Close(handle) == EError::Success ? m_folder.Read("out") : "<failed>";
    }

    CKvTemporaryFolder m_folder;
};

void WriteOneOfEach(CKvFieldWriter& writer)
{
    writer.WriteU32(0x11223344);
    writer.WriteU64(0x8877665544332211);
    writer.WriteS32(-2);
    writer.WriteF32(1.5F);
    writer.WriteBytes("12345", 5);
    writer.WriteText("abc");
    writer.WriteText("");
}

TEST_F(KvFieldWriterTest, NumbersTakeTheByteOrderAndBytesDoNot)
{
    const std::string texts("12345abc\0\0", 10);
    const std::string little(
        "\x44\x33\x22\x11\x11\x22\x33\x44\x55\x66\x77\x88\xFE\xFF\xFF\xFF\0\0\xC0\x3F", 20);
    const std::string big(
        "\x11\x22\x33\x44\x88\x77\x66\x55\x44\x33\x22\x11\xFF\xFF\xFF\xFE\x3F\xC0\0\0", 20);
    EXPECT_EQ(Write(false, WriteOneOfEach), little + texts);
    EXPECT_EQ(Write(true, WriteOneOfEach), big + texts);
}

TEST_F(KvFieldWriterTest, FieldsOfAnyLengthKeepTheirOrder)
{
    constexpr std::size_t kBuffer = 65536;
    for (const std::size_t before : {std::size_t{0}, std::size_t{1}, kBuffer - 4, kBuffer - 1})
        for (const std::size_t size : {std::size_t{0}, std::size_t{4}, kBuffer, kBuffer + 1}) {
            const std::string first(before, 'a');
            const std::string second(size, 'b');
            const std::string bytes = Write(true, [&](CKvFieldWriter& writer) {
                writer.WriteBytes(first.data(), first.size());
                writer.WriteBytes(second.data(), second.size());
                writer.WriteU32(0x31323334);
            });
            EXPECT_TRUE(bytes == first + second + "1234") << before << " and " << size;
        }
}

TEST_F(KvFieldWriterTest, TheFileLayersSwapFlagWorksOnEachFieldThatIsWrittenUnderIt)
{
    FileSystem::SetSwapDWORDOnWrite(true);
    const std::string expected(
        "\x11\x22\x33\x44\x44\x33\x22\x11\x88\x77\x66\x55\xFF\xFF\xFF\xFE\x3F\xC0\0\0"
        "43215abc\0\0",
        30);
    EXPECT_EQ(Write(false, WriteOneOfEach), expected);

    FileSystem::SetSwapDWORDOnWrite(false);
    const std::string changing = Write(false, [](CKvFieldWriter& writer) {
        writer.WriteBytes("1234", 4);
        FileSystem::SetSwapDWORDOnWrite(true);
        writer.WriteBytes("1234", 4);
        FileSystem::SetSwapDWORDOnWrite(false);
        writer.WriteBytes("5678", 4);
        FileSystem::SetSwapDWORDOnWrite(true);
    });
    EXPECT_EQ(changing, "123443215678");
}

TEST_F(KvFieldWriterTest, ALostFieldFailsTheFile)
{
    const std::string longField(100000, 'x');
    int failing = 0;
    for (bool failed = true; failed;) {
        SCOPED_TRACE(++failing);
        bool hasFailed = false;
        const std::string bytes = Write(false, [&](CKvFieldWriter& writer) {
            writer.WriteU32(1);
            const CKvFaultyDisk disk(failing, CKvFaultyDisk::EFaults::Once);
            for (int i = 0; i < 2; ++i) {
                writer.WriteBytes(longField.data(), longField.size());
                writer.WriteU32(1);
            }
            hasFailed = disk.HasFailed();
        });
        failed = hasFailed;
        EXPECT_EQ(bytes == "<failed>", failed);
    }
    EXPECT_EQ(failing, 5);  // each long field, and what was collected before it
}

}  // namespace
