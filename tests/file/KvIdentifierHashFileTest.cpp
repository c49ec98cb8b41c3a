#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/KvIdentifier.h"
#include "core/KvIdentifierManager.h"
#include "tests/support/KvFaultyDisk.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

using Names = std::vector<std::string>;

/// The example of docs/formats/identifier-hash-file.md.
const std::string kLittle(
    "\x02\0\0\0"
    "\x06\0\0\0entity\x0D\xAB\x69\xDB\x13\x35\xCE\xDD"
    "\x04\0\0\0name\x25\xF9\xC9\x44\x54\x93\xB1\xAF",
    38);
const std::string kBig(
    "\0\0\0\x02"
    "\0\0\0\x06"
    "entity\xDD\xCE\x35\x13\xDB\x69\xAB\x0D"
    "\0\0\0\x04"
    "name\xAF\xB1\x93\x54\x44\xC9\xF9\x25",
    38);

/// A name that no reader takes.
const std::string kTooLong(512, 'n');

/// An entry of a little-endian file.
std::string Entry(const std::string& name, char crc)
{
    const auto low = static_cast<char>(name.size() & 0xFF);
    const auto high = static_cast<char>(name.size() >> 8);
    return std::string{low, high, 0, 0} + name + std::string{crc, 0, 0, 0, 0, 0, 0, 0};
}

class KvIdentifierHashFileTest : public testing::Test
{
protected:
    void SetUp() override { m_manager.Release(); }
    void TearDown() override { m_manager.Release(); }

    /// Loads these bytes into an empty register and gives the names there, in slot order.
    Names Load(const std::string& bytes, bool swapEndian)
    {
        m_manager.Release();
        m_manager.LoadHashFile(m_folder.Write("hash", bytes).c_str(), swapEndian);
        CKvArray<const CKvIdentifierHashEntry*> entries;
        m_manager.ListInSlotOrder(entries);
        Names names;
        for (const CKvIdentifierHashEntry* entry : entries)
            names.push_back(entry->name.GetText());
        return names;
    }

    CKvIdentifierManager& m_manager = CKvIdentifierManager::GetInstance();
    CKvTemporaryFolder m_folder;
};

TEST_F(KvIdentifierHashFileTest, BothByteOrdersHaveTheDocumentedBytesAndComeBack)
{
    for (const bool swapEndian : {false, true}) {
        m_manager.Release();
        for (const char* name : {"Name", "entity", kTooLong.c_str()})
            CKvIdentifier{name};
        m_manager.SaveHashFile(m_folder.Path("hash").c_str(), swapEndian);
        const std::string& image = swapEndian ? kBig : kLittle;
        EXPECT_EQ(m_folder.Read("hash"), image);
        EXPECT_EQ(Load(image, swapEndian), (Names{"entity", "name"}));
        EXPECT_EQ(Load(image, !swapEndian), Names{});
    }
}

TEST_F(KvIdentifierHashFileTest, AFileCutAnywhereGivesTheEntriesBeforeTheCut)
{
    for (std::size_t length = 0; length < kLittle.size(); ++length)
        EXPECT_EQ(Load(kLittle.substr(0, length), false).size(), length < 22 ? 0U : 1U) << length;
}

TEST_F(KvIdentifierHashFileTest, OddEntriesAreTakenAsTheyStandAndTooLongNamesEndTheReading)
{
    const std::string three("\3\0\0\0", 4);
    const std::string a = Entry("a", 1);
    const std::string b = Entry("b", 2);
    EXPECT_EQ(Load(three + Entry(kTooLong.substr(1), 1) + b, false),
              (Names{kTooLong.substr(1), "b"}));
    EXPECT_EQ(Load(three + b + Entry(kTooLong, 1) + a, false), Names{"b"});
    EXPECT_EQ(Load(three + b + "\xFF\xFF\xFF\xFF" + kTooLong, false), Names{"b"});
    EXPECT_EQ(Load(three + Entry("", 1) + b, false), (Names{"", "b"}));
}

TEST_F(KvIdentifierHashFileTest, ASaveThatFailsLeavesTheOldFile)
{
    CKvIdentifier("entity");
    CKvIdentifier("name");
    int failing = 0;
    for (bool failed = true; failed;) {
        m_folder.Write("hash", "old");
        const CKvFaultyDisk disk(++failing, CKvFaultyDisk::EFaults::FromThenOn);
        m_manager.SaveHashFile(m_folder.Path("hash").c_str(), false);
        failed = disk.HasFailed();
        EXPECT_EQ(m_folder.Read("hash"), failed ? "old" : kLittle) << failing;
    }
    EXPECT_EQ(failing, 5);  // begin, one write, close, commit, and a run without fault
}

}  // namespace
