#include "file/KvBigFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "core/KvIdentifier.h"
#include "file/KvBigFileGenerator.h"
#include "file/KvFileSystemUnCached.h"
#include "tests/scripttree/KvAllocationWatch.h"
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
    return CKvIdentifier(name.c_str()).GetCrc64();
}

/// A field of a table.
std::string Bytes(std::size_t value)
{
    return KvLittleEndian(value, 4);
}

std::string Record(const std::string& name, unsigned int offset, unsigned int size)
{
    return KvLittleEndian(CrcOf(name), 8) + name + '\0' + Bytes(offset) + Bytes(size);
}

/// A table as its writer should have made it, with a data area of 4 bytes.
std::string Archive(std::size_t count, const std::string& records)
{
    return Bytes(4 + records.size()) + Bytes(count) + records + "data";
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
            int size = 0;
            CKvAllocationWatch watch;
            delete[] static_cast<unsigned char*>(file.ReadEntireFile(size));
            watch.Stop();
            EXPECT_LT(watch.totalBytes, 65536U) << "whatever size the table tells";
            EXPECT_GE(file.GetSize(), 0);
            EXPECT_LE(Read(byName, 64).size(), 64U);
            EXPECT_TRUE(archive.FileClose(byIndex));
            archive.FileClose(byName);
        }
        return true;
    }

    CKvTemporaryFolder m_folder;
};

TEST_F(KvBigFileTest, BothByteOrdersHaveTheDocumentedBytes)
{
    CKvBigFileGenerator generator;
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
    EXPECT_TRUE(m_folder.Read("archive").substr(26) == content);
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
    EXPECT_EQ(file.GetSize(), 3);

    const auto seek = [&file](bool (CKvFile::*origin)(int), int offset, int position) {
        EXPECT_TRUE((file.*origin)(offset));
        EXPECT_EQ(file.GetPos(), position);
        return Read(file.GetHandle(), 10);
    };
    EXPECT_EQ(seek(&CKvFile::SeekFromStart, 1, 1), "bc");
    EXPECT_EQ(seek(&CKvFile::SeekFromEnd, 2, 1), "bc");
    EXPECT_EQ(seek(&CKvFile::SeekFromStart, -2, -2), "");
    EXPECT_EQ(seek(&CKvFile::SeekFromCurrent, INT_MIN, INT_MIN), "");
    EXPECT_EQ(seek(&CKvFile::SeekFromStart, INT_MAX, INT_MAX), "");
    EXPECT_EQ(seek(&CKvFile::SeekFromCurrent, INT_MAX, INT_MAX), "");

    EXPECT_EQ(file.Write("x", 1), 0);
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
    CKvFileHandle* const handles[] = {archive.FileOpenByIndex(0), archive.FileOpenByIndex(1),
                                      archive.FileOpenByIndex(2)};
    std::size_t positions[3] = {};
    std::size_t at = 0;
    for (int step = 0; step < 20'000; ++step) {
        if (random() % 50 == 0)
            at = random() % 3;
        if (random() % 50 == 0) {
            positions[at] = random() % (contents[at].size() + 1);
            FileSystem::SeekFromStart(handles[at], static_cast<int>(positions[at]));
        }
        const std::size_t size = random() % (random() % 20 == 0 ? 20'000 : 200);
        const std::string expected = contents[at].substr(positions[at], size);
        ASSERT_EQ(Read(handles[at], static_cast<int>(size)), expected) << step;
        positions[at] += expected.size();
    }
    for (CKvFileHandle* handle : handles)
        EXPECT_EQ(FileSystem::Close(handle), EError::Success);
}

TEST_F(KvBigFileTest, HandlesOutliveTheirArchive)
{
    CKvBigFile archive, other;
    const TKvString<char> path = m_folder.Write("archive", kLittle).c_str();
    EXPECT_EQ(archive.Open(path, EMode::WriteBinary), EError::ModeNotAllowed);
    ASSERT_EQ(archive.Open(path, EMode::ReadBinary), EError::Success);
    EXPECT_EQ(archive.Open(path, EMode::ReadBinary), EError::ArchiveNotOpened);
    for (const int outside : {-1, 2}) {
        EXPECT_EQ(archive.FileOpenByIndex(outside), nullptr);
        EXPECT_EQ(archive.GetFileNameCrcByIndex(outside), 0U);
        EXPECT_EQ(archive.GetFileNameByIndex(outside), "");
    }
    CKvFileHandle* closedBefore = archive.FileOpen("a.txt");
    CKvFileHandle* closedByArchive = archive.FileOpen("A.txt");
    CKvFileHandle* closedBySystem = archive.FileOpenByIndex(0);
    EXPECT_FALSE(other.FileClose(closedBefore));
    EXPECT_TRUE(archive.FileClose(closedBefore));
    EXPECT_EQ(archive.Close(), EError::Success);
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
        Archive(1000000, good),
        Bytes(3) + Bytes(0) + "data",  // no room for the count
        Archive(1, good.substr(0, 17)),
        Archive(1, Record(longest + "n", 5000, 4)),
        Archive(1, std::string(30, 'n')),  // a name without end
        Bytes(0xFFFFFFFFU) + Bytes(1) + good,
        Bytes(27) + Bytes(1) + good + "data",  // one byte more than there is
    };
    for (const std::string& bytes : refused) {
        CKvBigFile archive;
        CKvAllocationWatch watch;
        const EError error = Open(archive, bytes);
        watch.Stop();
        EXPECT_EQ(error, EError::ArchiveNotOpened) << &bytes - refused.data();
        EXPECT_LT(watch.totalBytes, 65536U) << &bytes - refused.data();
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
    file.SeekFromStart(0);
    EXPECT_EQ(file.ReadString(text), EError::ReadFailed);
    unsigned short value = 0;
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
            CKvBigFileGenerator generator;
            const CKvFaultyDisk disk(++failing, faults);
            const bool saved =
                Add(generator, "a.txt", "abc") && Add(generator, "b", "") && Save(generator);
            failed = disk.HasFailed();
            EXPECT_EQ(m_folder.Read("archive"), saved ? kLittle : "old") << failing;
            EXPECT_LE(m_folder.Names().size(), 3U) << failing;
            EXPECT_TRUE(saved || failed);
        }
        EXPECT_GE(failing, 30);
    }
}

TEST_F(KvBigFileTest, ADiskThatFailsAnywhereGivesWholeMembersAndFilesOrNone)
{
    std::string text(60'000, '\0');  // more pieces than a reader holds, packed too
    std::generate(text.begin(), text.end(), std::mt19937(1));
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
                std::string read = KvReadWhole(file);
                EXPECT_TRUE(read == content || (read == "<null>" && disk.HasFailed())) << failing;
                file.Close();
                if (file.Open(m_folder.Path(name).c_str(), EMode::ReadBinary, false) ==
                    EError::Success)
                    read = KvReadWhole(file);
                failed = disk.HasFailed();
                EXPECT_TRUE(read == content || (read == "<null>" && failed)) << failing;
                file.Close();
            }
            archive.Close();
        }
        EXPECT_GE(failing, 40);
    }
}

TEST_F(KvBigFileTest, WhatCannotBeArchivedIsRefusedAndChangedSourcesAreToo)
{
    CKvBigFileGenerator generator;
    const TKvString<char> source = m_folder.Write("huge", "").c_str();
    EXPECT_FALSE(generator.AddFile(m_folder.Path("absent").c_str(), "absent", 1));
    EXPECT_FALSE(generator.AddFile(source, std::string(4096, 'n').c_str(), 1));
    std::filesystem::resize_file(m_folder.Path("huge"), std::uintmax_t{INT_MAX} - 8 - 17);
    EXPECT_FALSE(generator.AddFile(source, "h", 1));
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
}

TEST_F(KvBigFileTest, TheFirstEntryOfACrcIsFoundWhileEntriesAreAdded)
{
    CKvBigFileFAT fat;
    // CRCs that a table without salt would put into one slot, each of them twice, and so many that
    // it would be hours before they were found.
    for (int i = 0; i < 1000000; ++i) {
        const std::uint64_t crc = std::uint64_t(i / 2) << 32;
        fat.AddEntry(CKvBigFileEntry(crc, "", 0, i));
        ASSERT_NE(fat.FindEntry(crc), nullptr);
        EXPECT_EQ(fat.FindEntry(crc)->GetSize(), i / 2 * 2);
        EXPECT_EQ(fat.FindEntry(crc + 1), nullptr);
    }
}

}  // namespace
