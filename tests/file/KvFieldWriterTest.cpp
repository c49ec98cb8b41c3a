#include "file/KvFieldWriter.h"

#include <gtest/gtest.h>

#include <string>

#include "file/KvFileSystemUnCached.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

/// The bytes of a new file that \a fill wrote to.
template <class Fill>
std::string Write(bool bigEndian, Fill fill)
{
    const CKvTemporaryFolder folder;
    CKvFileHandle* handle = nullptr;
    EXPECT_EQ(CKvFileSystemUnCached::Open(handle, TKvString<char>(folder.Path("out").c_str()),
                                          EKvFileSystemOpenMode::WriteBinary, false),
              EKvFileSystemError::Success);
    {
        CKvFieldWriter writer(handle, bigEndian);
        fill(writer);
    }
    EXPECT_EQ(CKvFileSystemUnCached::Close(handle), EKvFileSystemError::Success);
    return folder.Read("out");
}

TEST(KvFieldWriterTest, FieldsOfAnyLengthKeepTheirOrder)
{
    constexpr std::size_t kBuffer = 65536;
    for (const std::size_t before : {std::size_t{0}, kBuffer - 4, kBuffer - 1})
        for (const std::size_t size : {std::size_t{4}, kBuffer, kBuffer + 1}) {
            const std::string text = std::string(before, 'a') + std::string(size, 'b');
            const std::string bytes = Write(true, [&](CKvFieldWriter& writer) {
                writer.WriteBytes(text.data(), before);
                writer.WriteBytes(text.data() + before, size);
                writer.WriteU32(0x31323334);
            });
            EXPECT_TRUE(bytes == text + "1234") << before << " and " << size;
        }
}

TEST(KvFieldWriterTest, TheFileLayersSwapFlagWorksOnEachFieldThatIsWrittenUnderIt)
{
    const std::string bytes = Write(false, [](CKvFieldWriter& writer) {
        for (const bool swap : {false, true, false, true}) {
            CKvFileSystemUnCached::SetSwapDWORDOnWrite(swap);
            writer.WriteBytes("12345", 5);
        }
    });
    CKvFileSystemUnCached::SetSwapDWORDOnWrite(false);
    EXPECT_EQ(bytes, "12345432151234543215");
}

}  // namespace
