#include "file/KvFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <filesystem>
#include <memory>
#include <string>

#include "file/KvFileSystemUnCached.h"
#include "tests/support/KvFaultyDisk.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

using EError = EKvFileSystemError;
using EMode = EKvFileSystemOpenMode;

/// One value of each kind that files store.
struct Values
{
    signed char s8 = 0;
    unsigned char u8 = 0;
    short s16 = 0;
    unsigned short u16 = 0;
    int s32 = 0;
    unsigned int u32 = 0;
    float f32 = 0;
    std::int64_t s64 = 0;
    std::uint64_t u64 = 0;

    bool operator==(const Values&) const = default;

    /// Gives how many values were read whole.
    int ReadFrom(CKvFile& file)
    {
        const EError errors[] = {file.ReadS8(s8),   file.ReadU8(u8),   file.ReadS16(s16),
                                 file.ReadU16(u16), file.ReadS32(s32), file.ReadU32(u32),
                                 file.ReadF32(f32), file.ReadS64(s64), file.ReadU64(u64)};
        return static_cast<int>(std::count(std::begin(errors), std::end(errors), EError::Success));
    }

    /// Gives how many values were written.
    int WriteTo(CKvFile& file) const
    {
        const EError errors[] = {file.WriteS8(s8),   file.WriteU8(u8),   file.WriteS16(s16),
                                 file.WriteU16(u16), file.WriteS32(s32), file.WriteU32(u32),
                                 file.WriteF32(f32), file.WriteS64(s64), file.WriteU64(u64)};
        return static_cast<int>(std::count(std::begin(errors), std::end(errors), EError::Success));
    }
};

constexpr Values kValues = {-2, 200, -300, 65000, -70000, 0x89ABCDEF, 1.5F, -2, 0xFEDCBA9876543210};

/// The values' bytes on a little-endian machine.
const std::string kImage(
    "\xFE\xC8\xD4\xFE\xE8\xFD\x90\xEE\xFE\xFF\xEF\xCD\xAB\x89\x00\x00\xC0\x3F"
    "\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x10\x32\x54\x76\x98\xBA\xDC\xFE",
    34);

class KvFileTest : public testing::Test
{
protected:
    void Open(CKvFile& file, const std::string& name, EMode mode) const
    {
        EXPECT_EQ(file.Open(TKvString<char>(m_folder.Path(name).c_str()), mode, false),
                  EError::Success);
    }

    /// The whole of a file, or "<null>".
    static std::string ReadWhole(CKvFile& file)
    {
        int size = -1;
        const std::unique_ptr<unsigned char[]> bytes(
            static_cast<unsigned char*>(file.ReadEntireFile(size)));
        if (bytes == nullptr)
            return size == 0 ? "<null>" : "<null with a size>";
        return {reinterpret_cast<const char*>(bytes.get()), static_cast<std::size_t>(size)};
    }

    CKvTemporaryFolder m_folder;
};

TEST_F(KvFileTest, TypedValuesAreStoredInTheHostsOrderAndComeBack)
{
    CKvFile file;
    Open(file, "values", EMode::WriteBinary);
    EXPECT_EQ(kValues.WriteTo(file), 9);
    EXPECT_EQ(file.WriteU16(0x12345), EError::Success);
    EXPECT_EQ(file.WriteS8(-129), EError::Success);
    EXPECT_EQ(file.Close(), EError::Success);
    EXPECT_EQ(m_folder.Read("values"), kImage + "\x45\x23\x7F");

    Open(file, "values", EMode::ReadBinary);
    Values values;
    EXPECT_EQ(values.ReadFrom(file), 9);
    EXPECT_EQ(values, kValues);

    EXPECT_EQ(kValues.WriteTo(file), 0);
    file.Close();
    EXPECT_EQ(values.ReadFrom(file), 0);
}

TEST_F(KvFileTest, AValueThatIsCutShortFailsAndHasZerosForTheRest)
{
    int cuts = 0;
    for (std::size_t length = 0; length < kImage.size(); ++length, ++cuts) {
        m_folder.Write("cut", kImage.substr(0, length));
        m_folder.Write("padded", kImage.substr(0, length) + std::string(34 - length, '\0'));
        CKvFile cut;
        CKvFile padded;
        Open(cut, "cut", EMode::ReadBinary);
        Open(padded, "padded", EMode::ReadBinary);
        Values values = kValues;
        Values expected;
        EXPECT_LT(values.ReadFrom(cut), 9) << length;
        EXPECT_EQ(expected.ReadFrom(padded), 9);
        EXPECT_EQ(values, expected) << length;
    }
    EXPECT_EQ(cuts, 34);
}

TEST_F(KvFileTest, StringsEndAtAZeroTheEndOfTheFileOrTheirGreatestLength)
{
    const std::string longest(CKvFile::kLongestString, 's');
    const std::string zero(1, '\0');
    struct Row
    {
        std::string content;
        std::string text;
        EError error;
        int position;
    };
    const Row rows[] = {
        {"abc" + zero + "def", "abc", EError::Success, 4},
        {zero, "", EError::Success, 1},
        {longest + zero, longest, EError::Success, 4096},
        {"abc", "abc", EError::ReadFailed, 3},
        {"", "", EError::ReadFailed, 0},
        {longest + "s" + zero, "", EError::ReadFailed, 4096},
    };
    for (const Row& row : rows) {
        m_folder.Write("text", row.content);
        CKvFile file;
        Open(file, "text", EMode::ReadBinary);
        TKvString<char> text("before");
        EXPECT_EQ(file.ReadString(text), row.error);
        EXPECT_EQ(text.GetText(), row.text);
        EXPECT_EQ(file.GetPos(), row.position);
    }
}

TEST_F(KvFileTest, OneObjectClosesTheHandleWhateverSharesIt)
{
    m_folder.Write("file", "abc");
    const CKvFaultyDisk disk;
    {
        CKvFile owner;
        Open(owner, "file", EMode::ReadBinary);
        EXPECT_EQ(owner.Open("file", EMode::ReadBinary, false), EError::AlreadyOpen);
        {
            const CKvFile copy(owner);
            CKvFile assigned;
            assigned = copy;
            owner = assigned;
        }
        unsigned char byte = 0;
        EXPECT_EQ(owner.ReadU8(byte), EError::Success);
        EXPECT_EQ(byte, 'a');

        CKvFile other;
        Open(other, "file", EMode::ReadBinary);
        other = owner;  // closes what it had opened
    }
    EXPECT_EQ(disk.GetCount(), 5);  // twice open, once read, twice close

    CKvFile closed;
    EXPECT_EQ(closed.Close(), EError::CloseFailed);
    EXPECT_EQ(closed.GetOpenMode(), EMode::None);
}

TEST_F(KvFileTest, AFileIsReadWholeOrNotAtAll)
{
    for (const std::string& content : {std::string("a\0b\r\n", 5), std::string()}) {
        m_folder.Write("file", content);
        CKvFile file;
        Open(file, "file", EMode::ReadBinary);
        file.SeekFromEnd(0);
        EXPECT_EQ(ReadWhole(file), content);
    }
    std::filesystem::resize_file(m_folder.Path("file"), std::uintmax_t{INT_MAX} + 1);
    CKvFile tooLarge;
    Open(tooLarge, "file", EMode::ReadBinary);
    EXPECT_EQ(ReadWhole(tooLarge), "<null>");
}

TEST_F(KvFileTest, AFailingDiskGivesAWholeFileOrNone)
{
    using EFaults = CKvFaultyDisk::EFaults;
    m_folder.Write("file", "abc");
    int wholes = 0;
    int runs = 0;
    for (const EFaults faults : {EFaults::Once, EFaults::FromThenOn}) {
        int failing = 0;
        for (bool failed = true; failed; ++runs) {
            CKvFile file;
            Open(file, "file", EMode::ReadBinary);
            const CKvFaultyDisk disk(++failing, faults);
            const std::string bytes = ReadWhole(file);
            EXPECT_TRUE(bytes == "abc" || bytes == "<null>") << bytes << " at " << failing;
            wholes += bytes == "abc";
            failed = disk.HasFailed();
        }
    }
    EXPECT_GE(runs, 14);  // the start, four steps of the size, the content, and a run without fault
    EXPECT_GE(wholes, 2);
}

}  // namespace
