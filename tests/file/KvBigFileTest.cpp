#include "file/KvBigFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <climits>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "file/KvBigFileGenerator.h"
#include "file/KvFileSystemUnCached.h"
#include "tests/support/KvCompressedFiles.h"
#include "tests/support/KvDocumentedBytes.h"
#include "tests/support/KvFaultyDisk.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

using FileSystem = CKvFileSystemUnCached;
using EError = EKvFileSystemError;
using EMode = EKvFileSystemOpenMode;

const std::string kDocument = std::string(KV_SOURCE_PATH) + "/docs/formats/archive.md";

/// The documented archive: "a.txt" holds "abc", "b" is empty.
const std::string kLittle = KvDocumentedBytes(kDocument, 0);
const std::string kBig = KvDocumentedBytes(kDocument, 1);
constexpr std::size_t kTableSize = 48;

std::uint64_t CrcOf(const std::string& name)
{
    return CreateCrc64_ToLower(name.data(), static_cast<unsigned int>(name.size()),
                               kKvCrc64Initial);
}

template <class T>
std::string Bytes(T value)
{
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

std::string Record(const std::string& name, unsigned int offset, unsigned int size)
{
    return Bytes(CrcOf(name)) + name + '\0' + Bytes(offset) + Bytes(size);
}

/// A table as its writer should have made it, with a data area of 4 bytes.
std::string Archive(int count, const std::string& records)
{
    return Bytes(static_cast<unsigned int>(4 + records.size())) + Bytes(count) + records + "data";
}

std::string Read(CKvFileHandle* handle, int size)
{
    std::string bytes(static_cast<std::size_t>(size), '?');
    const int count = FileSystem::Read(handle, bytes.data(), size);
    return bytes.substr(0, static_cast<std::size_t>(count));
}

class KvBigFileTest : public testing::Test
{
protected:
    bool Add(CKvBigFileGenerator& generator, const std::string& name, const std::string& content)
    {
        return generator.AddFile(m_folder.Write(name, content).c_str(), name.c_str(), CrcOf(name));
    }

    bool Save(CKvBigFileGenerator& generator, bool swapEndian = false, bool headerOnly = false)
    {
        return generator.Save(m_folder.Path("archive").c_str(), swapEndian, headerOnly);
    }

    EError Open(CKvBigFile& archive, const std::string& bytes)
    {
        return archive.Open(m_folder.Write("archive", bytes).c_str(), EMode::ReadBinary);
    }

    /// Opens an archive of any bytes, opens each member by index and by name, and reads it, as far
    /// as it goes and whole.
    bool UseAll(const std::string& bytes, std::string& contents)
    {
        CKvBigFile archive;
        if (Open(archive, bytes) != EError::Success)
            return false;
        for (int i = 0; i < archive.GetNumFiles(); ++i) {
            CKvFileHandle* byName = archive.FileOpen(archive.GetFileNameByIndex(i));
            CKvFileHandle* byIndex = archive.FileOpenByIndex(i);
            contents += Read(byIndex, 64);
            CKvFile file(byIndex);
            contents += '=' + KvReadWhole(file);
            EXPECT_LE(Read(byName, 64).size(), 64U);
            EXPECT_TRUE(archive.FileClose(byIndex));
            const bool isFound = byName != nullptr;
            EXPECT_EQ(archive.FileClose(byName), isFound);
        }
        return true;
    }

    CKvTemporaryFolder m_folder;
};

TEST_F(KvBigFileTest, BothByteOrdersHaveTheDocumentedBytes)
{
    CKvBigFileGenerator generator;
    ASSERT_TRUE(Save(generator));
    EXPECT_EQ(m_folder.Read("archive"), std::string("\4\0\0\0\0\0\0\0", 8));
    ASSERT_TRUE(Add(generator, "a.txt", "abc") && Add(generator, "b", ""));
    for (const bool swapEndian : {false, true}) {
        const std::string& image = swapEndian ? kBig : kLittle;
        EXPECT_TRUE(Save(generator, swapEndian));
        EXPECT_EQ(m_folder.Read("archive"), image);
        EXPECT_TRUE(Save(generator, swapEndian, true));
        EXPECT_EQ(m_folder.Read("archive"), image.substr(0, kTableSize));
    }
}

TEST_F(KvBigFileTest, TheSwapFlagWorksOnAMemberAsOnOneWrite)
{
    std::string content(200'003, '\0');
    std::generate(content.begin(), content.end(), [n = 0]() mutable { return char(n++ / 5); });
    CKvBigFileGenerator generator;
    ASSERT_TRUE(Add(generator, "a", content));
    FileSystem::SetSwapDWORDOnWrite(true);
    EXPECT_TRUE(Save(generator));
    FileSystem::SetSwapDWORDOnWrite(false);
    for (std::size_t i = 0; i + 4 <= content.size(); i += 4)
        std::reverse(content.begin() + long(i), content.begin() + long(i) + 4);
    const std::string bytes = m_folder.Read("archive");
    EXPECT_EQ(bytes.substr(0, 8), std::string("\0\0\0\x16\0\0\0\1", 8));
    EXPECT_TRUE(bytes.substr(26) == content);
}

TEST_F(KvBigFileTest, MembersOfRegisteredArchivesStandForFilesOnDisk)
{
    const TKvString<char> path = m_folder.Write("registered", kLittle).c_str();
    EXPECT_FALSE(FileSystem::AddBigFile(m_folder.Path("absent").c_str()));
    EXPECT_TRUE(FileSystem::AddBigFile(path));
    EXPECT_FALSE(FileSystem::AddBigFile(path));

    CKvFile file;
    EXPECT_EQ(file.Open("A.TXT", EMode::ReadBinary, false), EError::NotOpened);
    ASSERT_EQ(file.Open("A.TXT", EMode::ReadText, true), EError::Success);
    EXPECT_EQ(file.GetHandle()->GetType(), CKvFileHandle::EType::Archive);
    EXPECT_STREQ(file.GetHandle()->GetName().GetText(), "a.txt");
    EXPECT_EQ(file.GetOpenMode(), EMode::ReadBinary);
    EXPECT_EQ(file.GetSize(), 3);

    struct CStep
    {
        bool (CKvFile::*seek)(int);
        int offset;
        int position;
        std::string bytes;
    };
    const std::vector<CStep> steps = {
        {&CKvFile::SeekFromStart, 1, 1, "bc"},
        {&CKvFile::SeekFromCurrent, 0, 3, ""},
        {&CKvFile::SeekFromEnd, 2, 1, "bc"},
        {&CKvFile::SeekFromEnd, -2, 5, ""},
        {&CKvFile::SeekFromStart, -2, -2, ""},
        {&CKvFile::SeekFromCurrent, INT_MIN, INT_MIN, ""},
        {&CKvFile::SeekFromStart, INT_MAX, INT_MAX, ""},
        {&CKvFile::SeekFromCurrent, INT_MAX, INT_MAX, ""},
    };
    for (const CStep& step : steps) {
        EXPECT_TRUE((file.*step.seek)(step.offset));
        EXPECT_EQ(file.GetPos(), step.position);
        EXPECT_EQ(Read(file.GetHandle(), 10), step.bytes);
    }

    char bytes[5] = {};
    file.SeekFromStart(0);
    EXPECT_EQ(file.AsyncRead(bytes, 2), EError::Success);
    EXPECT_EQ(file.AsyncRead(bytes + 2, 2), EError::ReadFailed);
    EXPECT_STREQ(bytes, "abc");
    EXPECT_EQ(file.Write("x", 1), 0);
    EXPECT_EQ(file.AsyncWrite("x", 1), EError::Success);
    EXPECT_EQ(file.Close(), EError::Success);
    EXPECT_EQ(m_folder.Read("registered"), kLittle);
}

TEST_F(KvBigFileTest, ReadsOfManyHandlesInAnyOrderGiveTheMembersBytes)
{
    std::mt19937 random(1);
    CKvBigFileGenerator generator;
    std::vector<std::string> contents;
    for (const std::size_t size : {30'000U, 1U, 50'000U}) {
        contents.emplace_back(size, '\0');
        std::generate(contents.back().begin(), contents.back().end(), [&] { return random(); });
        ASSERT_TRUE(Add(generator, std::to_string(size), contents.back()));
    }
    ASSERT_TRUE(Save(generator));
    CKvBigFile archive;
    ASSERT_EQ(archive.Open(m_folder.Path("archive").c_str(), EMode::ReadBinary), EError::Success);
    std::array<CKvFileHandle*, 3> handles = {};
    std::array<std::size_t, 3> positions = {};
    for (int i = 0; i < 3; ++i)
        handles.at(std::size_t(i)) = archive.FileOpenByIndex(i);
    std::size_t at = 0;
    for (int step = 0; step < 20'000; ++step) {
        if (random() % 50 == 0)
            at = random() % 3;
        if (random() % 50 == 0) {
            positions.at(at) = random() % (contents[at].size() + 1);
            FileSystem::SeekFromStart(handles.at(at), static_cast<int>(positions.at(at)));
        }
        const std::size_t size = random() % (random() % 20 == 0 ? 20'000 : 200);
        const std::string expected = contents[at].substr(positions.at(at), size);
        ASSERT_EQ(Read(handles.at(at), static_cast<int>(size)), expected) << step;
        positions.at(at) += expected.size();
    }
    for (CKvFileHandle* handle : handles)
        EXPECT_EQ(FileSystem::Close(handle), EError::Success);
}

TEST_F(KvBigFileTest, HandlesOutliveTheirArchive)
{
    CKvBigFile archive, other;
    const TKvString<char> path = m_folder.Write("archive", kLittle).c_str();
    EXPECT_EQ(archive.Open(path, EMode::WriteBinary), EError::ModeNotAllowed);
    EXPECT_EQ(archive.Open(path, EMode::None), EError::ArchiveNotOpened);
    EXPECT_EQ(archive.FileOpen("b"), nullptr);
    ASSERT_EQ(archive.Open(path, EMode::ReadBinary), EError::Success);
    EXPECT_EQ(archive.Open(path, EMode::ReadBinary), EError::ArchiveNotOpened);
    for (const int index : {-1, 2, INT_MAX}) {
        EXPECT_EQ(archive.FileOpenByIndex(index), nullptr);
        EXPECT_TRUE(archive.GetFileNameByIndex(index).IsEmpty());
        EXPECT_EQ(archive.GetFileNameCrcByIndex(index), 0U);
    }
    CKvFileHandle* closedBefore = archive.FileOpen("a.txt");
    CKvFileHandle* closedByArchive = archive.FileOpen("A.txt");
    CKvFileHandle* closedBySystem = archive.FileOpenByIndex(0);
    EXPECT_FALSE(other.FileClose(closedBefore));
    EXPECT_EQ(other.FileRead(closedBefore, nullptr, 1), 0);
    EXPECT_TRUE(archive.FileClose(closedBefore));
    EXPECT_EQ(archive.AsyncWrite(closedBySystem, "x", 1), EError::NotSupported);

    EXPECT_EQ(archive.Close(), EError::Success);
    EXPECT_EQ(archive.Close(), EError::CloseFailed);
    ASSERT_EQ(archive.Open(path, EMode::ReadBinary), EError::Success);
    EXPECT_EQ(Read(closedBySystem, 3), "");
    EXPECT_EQ(FileSystem::GetSize(closedBySystem), 0);
    EXPECT_TRUE(closedBySystem->GetName().IsEmpty());
    char byte = 0;
    EXPECT_EQ(FileSystem::AsyncRead(closedBySystem, &byte, 1), EError::ReadFailed);
    EXPECT_EQ(FileSystem::Close(closedBySystem), EError::Success);
    EXPECT_TRUE(archive.FileClose(closedByArchive));
    EXPECT_FALSE(archive.FileClose(closedByArchive));
}

TEST_F(KvBigFileTest, TablesThatLieAreRefusedAndHostileMembersAreEmpty)
{
    const std::string longest(CKvBigFileFAT::kLongestName, 'n');
    const std::string good = Record("a", 26, 4);
    const std::vector<std::pair<std::string, std::string>> openable = {
        {"data=data", Archive(1, good)},
        {"", Archive(-1, good)},
        {"data=data",
         Bytes(4 + 18 + 4) + Bytes(1) + good + "data"},  // bytes behind the last record
        {"=<null>", Archive(1, Record(longest, 5000, 4))},
        {"=<null>", Archive(1, Record("a", 30, 4))},
        {"=<null>", Archive(1, Record("a", 0x80000000, 4))},
        {"=<null>", Archive(1, Record("a", 26, 0x80000000))},
        {"ta" + std::string(62, '\0') + "=<null>", Archive(1, Record("a", 28, INT_MAX))},
        {"data=datadat=dat", Archive(2, Record("a", 44, 4) + Record("A", 44, 3))},
    };
    for (const auto& [expected, bytes] : openable) {
        std::string contents;
        EXPECT_TRUE(UseAll(bytes, contents));
        EXPECT_EQ(contents, expected) << &bytes - &openable[0].second;
    }
    const std::vector<std::string> refused = {
        Archive(2, good),
        Archive(INT_MAX, good),
        Archive(1, good.substr(0, 17)),
        Archive(1, Record(longest + "n", 5000, 4)),
        Archive(1, std::string(30, 'n')),  // a name without end
        Bytes(3) + Bytes(0) + "data",
        Bytes(0xFFFFFFFFU) + Bytes(1) + good,
        Bytes(27) + Bytes(1) + good + "data",  // one byte more than there is
    };
    for (const std::string& bytes : refused) {
        CKvBigFile archive;
        EXPECT_EQ(Open(archive, bytes), EError::ArchiveNotOpened) << &bytes - refused.data();
        EXPECT_EQ(archive.Close(), EError::CloseFailed);
        EXPECT_EQ(archive.GetNumFiles(), 0);
    }
    CKvBigFile tooLarge;
    std::filesystem::resize_file(m_folder.Path("archive"), std::uintmax_t{1} << 31);
    EXPECT_EQ(tooLarge.Open(m_folder.Path("archive").c_str(), EMode::ReadBinary),
              EError::ArchiveNotOpened);
    CKvBigFile cut;
    ASSERT_EQ(Open(cut, kLittle.substr(0, 50)), EError::Success);
    CKvFileHandle* handle = cut.FileOpen("a.txt");
    char bytes[3] = {};
    EXPECT_EQ(FileSystem::AsyncRead(handle, bytes, 3), EError::ReadFailed);
    FileSystem::SeekFromStart(handle, 0);
    EXPECT_EQ(Read(handle, 3), std::string("ab\0", 3));
    CKvFile file(handle);
    TKvString<char> text;
    unsigned short value = 0;
    file.SeekFromStart(0);
    EXPECT_EQ(file.ReadString(text), EError::ReadFailed);
    EXPECT_STREQ(text.GetText(), "ab");
    file.SeekFromStart(1);
    EXPECT_EQ(file.ReadU16(value), EError::ReadFailed);
    EXPECT_TRUE(cut.FileClose(handle));
}

TEST_F(KvBigFileTest, AnyCutAndAnyDamageOfTheTableIsBorne)
{
    int cases = 0;
    std::string contents;
    for (std::size_t length = 0; length < kLittle.size(); ++length, ++cases)
        EXPECT_EQ(UseAll(kLittle.substr(0, length), contents), length >= kTableSize) << length;
    for (std::size_t i = 0; i < kTableSize; ++i) {
        for (const int value : {0, 255, kLittle[i] + 1, kLittle[i] ^ 0x40}) {
            std::string bytes = kLittle;
            bytes[i] = static_cast<char>(value);
            UseAll(bytes, contents);
            ++cases;
        }
    }
    EXPECT_EQ(cases, 51 + 48 * 4);
}

TEST_F(KvBigFileTest, ADiskThatFailsAnywhereLeavesTheOldArchive)
{
    for (const auto faults : {CKvFaultyDisk::EFaults::Once, CKvFaultyDisk::EFaults::FromThenOn}) {
        int failing = 0;
        for (bool failed = true; failed;) {
            m_folder.Write("archive", "old");
            m_folder.Write("a.txt", "abc");
            m_folder.Write("b", "");
            CKvBigFileGenerator generator;
            const CKvFaultyDisk disk(++failing, faults);
            const auto add = [&](const char* name) {
                return generator.AddFile(m_folder.Path(name).c_str(), name, CrcOf(name));
            };
            const bool saved = add("a.txt") && add("b") && Save(generator);
            failed = disk.HasFailed();
            EXPECT_EQ(m_folder.Read("archive"), saved ? kLittle : "old") << failing;
            EXPECT_EQ(m_folder.Names().size(), 3U) << failing;
            EXPECT_TRUE(saved || failed);
        }
        EXPECT_GE(failing, 30);
    }
}

TEST_F(KvBigFileTest, ADiskThatFailsAnywhereGivesWholeMembersOrNone)
{
    const std::string text(50'000, 't');
    CKvBigFileGenerator generator;
    ASSERT_TRUE(Add(generator, "small", "abc") && Add(generator, "large", text) &&
                Add(generator, "packed", KvCompressFile(text)) && Save(generator));
    for (const auto faults : {CKvFaultyDisk::EFaults::Once, CKvFaultyDisk::EFaults::FromThenOn}) {
        int failing = 0;
        for (bool failed = true; failed;) {
            const CKvFaultyDisk disk(++failing, faults);
            CKvBigFile archive;
            const EError opened = archive.Open(m_folder.Path("archive").c_str(), EMode::ReadBinary);
            for (const auto& [name, content] :
                 {std::pair("small", std::string("abc")), {"large", text}, {"packed", text}}) {
                CKvFile file(archive.FileOpen(name));
                EXPECT_EQ(file.IsOpened(), opened == EError::Success) << failing;
                const std::string read = KvReadWhole(file);
                failed = disk.HasFailed();
                EXPECT_TRUE(read == content || (read == "<null>" && failed)) << failing << name;
                file.Close();
            }
            archive.Close();
        }
        EXPECT_GE(failing, 20);
    }
}

TEST_F(KvBigFileTest, WhatCannotBeArchivedIsRefusedAndChangedSourcesAreToo)
{
    CKvBigFileGenerator generator;
    const TKvString<char> source = m_folder.Write("huge", "").c_str();
    EXPECT_FALSE(generator.AddFile(m_folder.Path("absent").c_str(), "absent", 1));
    EXPECT_FALSE(generator.AddFile(source, std::string(4096, 'n').c_str(), 1));
    for (const std::uintmax_t size : {std::uintmax_t{INT_MAX} - 8 - 17, std::uintmax_t{1} << 31}) {
        std::filesystem::resize_file(m_folder.Path("huge"), size);
        EXPECT_FALSE(generator.AddFile(source, "h", 1)) << size;
    }
    std::filesystem::resize_file(m_folder.Path("huge"), INT_MAX / 2);
    CKvBigFileGenerator two;
    EXPECT_TRUE(two.AddFile(source, "h", 1));
    EXPECT_FALSE(two.AddFile(source, "h", 1));

    ASSERT_TRUE(Add(generator, "a.txt", "abc") && Add(generator, "b", "") && Save(generator));
    for (const std::string content : {"ab", "abcd"}) {
        m_folder.Write("a.txt", content);
        EXPECT_FALSE(Save(generator));
    }
    std::filesystem::remove(m_folder.Path("a.txt"));
    EXPECT_FALSE(Save(generator));
    EXPECT_EQ(m_folder.Read("archive"), kLittle);
    EXPECT_EQ(m_folder.Names().size(), 3U);
}

TEST_F(KvBigFileTest, TheFirstEntryOfACrcIsFoundWhileEntriesAreAdded)
{
    CKvBigFileFAT fat;
    EXPECT_EQ(fat.FindEntry(0), nullptr);
    for (int i = 0; i < 1000; ++i) {
        // CRCs that a table without salt would put into one slot, each of them twice.
        const std::uint64_t crc = std::uint64_t(i / 2) << 48;
        fat.AddEntry(CKvBigFileEntry(crc, "", 0, i));
        ASSERT_NE(fat.FindEntry(crc), nullptr);
        EXPECT_EQ(fat.FindEntry(crc)->GetSize(), i / 2 * 2);
        EXPECT_EQ(fat.FindEntry(crc + 1), nullptr);
    }
    EXPECT_STREQ(fat.GetEntry(999)->GetName().GetText(), "CRC<01F3000000000000>");
}

}  // namespace
