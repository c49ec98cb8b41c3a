#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/KvIdentifier.h"
#include "core/KvIdentifierManager.h"
#include "tests/support/KvFaultyDisk.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

using EFaults = CKvFaultyDisk::EFaults;

constexpr std::uint64_t kEntity = 0xDDCE3513DB69AB0D;
constexpr std::uint64_t kName = 0xAFB1935444C9F925;

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

/// An entry of a little-endian file.
std::string Entry(const std::string& name, char crc)
{
    std::string entry;
    for (int shift = 0; shift < 32; shift += 8)
        entry += static_cast<char>(name.size() >> shift);
    return entry + name + crc + std::string(7, '\0');
}

class KvIdentifierHashFileTest : public testing::Test
{
protected:
    void SetUp() override { m_manager.Release(); }
    void TearDown() override { m_manager.Release(); }

    void Save(bool swapEndian)
    {
        m_manager.SaveHashFile(TKvString<char>(m_folder.Path("hash").c_str()), swapEndian);
    }

    /// Loads these bytes into an empty register and gives the number of names there.
    int Load(const std::string& bytes, bool swapEndian)
    {
        m_manager.Release();
        const std::string path = m_folder.Write("hash", bytes);
        m_manager.LoadHashFile(TKvString<char>(path.c_str()), swapEndian);
        return CountNames();
    }

    int CountNames()
    {
        CKvArray<const CKvIdentifierHashEntry*> entries;
        m_manager.ListInSlotOrder(entries);
        return static_cast<int>(std::distance(entries.begin(), entries.end()));
    }

    std::string Name(std::uint64_t crc)
    {
        const char* name = m_manager.FindNameForCrc64(crc);
        return name != nullptr ? name : "<none>";
    }

    CKvIdentifierManager& m_manager = CKvIdentifierManager::GetInstance();
    CKvTemporaryFolder m_folder;
};

TEST_F(KvIdentifierHashFileTest, BothByteOrdersHaveTheDocumentedBytesAndComeBack)
{
    for (const bool swapEndian : {false, true}) {
        SCOPED_TRACE(swapEndian);
        m_manager.Release();
        Save(swapEndian);
        EXPECT_EQ(m_folder.Read("hash"), std::string(4, '\0'));

        CKvIdentifier("Name");
        CKvIdentifier("entity");
        CKvIdentifier(std::string(512, 'x').c_str());  // no reader takes it
        Save(swapEndian);
        const std::string& image = swapEndian ? kBig : kLittle;
        EXPECT_EQ(m_folder.Read("hash"), image);

        EXPECT_EQ(Load(image, swapEndian), 2);
        EXPECT_EQ(Name(kEntity), "entity");
        EXPECT_EQ(Name(kName), "name");
        EXPECT_EQ(Load(image, !swapEndian), 0);
    }
}

TEST_F(KvIdentifierHashFileTest, LoadingAddsToWhatIsKnownAndChangesNothingOfIt)
{
    CKvIdentifier("known");
    ASSERT_TRUE(m_manager.Insert(CKvIdentifierHashEntry("first", kName)));
    m_manager.LoadHashFile(TKvString<char>(m_folder.Path("absent").c_str()), false);
    m_manager.LoadHashFile(TKvString<char>(m_folder.Path().c_str()), false);
    EXPECT_EQ(CountNames(), 2);
    m_manager.LoadHashFile(TKvString<char>(m_folder.Write("hash", kLittle).c_str()), false);
    EXPECT_EQ(CountNames(), 3);
    EXPECT_EQ(Name(kName), "first");
    EXPECT_EQ(Name(kEntity), "entity");
}

TEST_F(KvIdentifierHashFileTest, AFileCutAnywhereGivesTheEntriesBeforeTheCut)
{
    int cuts = 0;
    for (std::size_t length = 0; length < kLittle.size(); ++length, ++cuts)
        EXPECT_EQ(Load(kLittle.substr(0, length), false), length < 22 ? 0 : 1) << length;
    EXPECT_EQ(cuts, 38);
}

TEST_F(KvIdentifierHashFileTest, OddEntriesAreTakenAsTheyStandAndTooLongNamesEndTheReading)
{
    struct Row
    {
        const char* what;
        std::string bytes;
        int count;
        std::string firstName;
    };
    const std::string longest(511, 'n');
    const std::string three("\3\0\0\0", 4);
    const std::string tail = Entry("b", 2) + Entry("c", 3);
    const Row rows[] = {
        {"longest name", three + Entry(longest, 1) + tail, 3, longest},
        {"too long a name", three + Entry(longest + "n", 1) + tail, 0, "<none>"},
        {"an absurd length", three + "\xFF\xFF\xFF\xFF" + std::string(600, 'n'), 0, "<none>"},
        {"no name", three + Entry("", 1) + tail, 3, ""},
        {"zero byte in a name", three + Entry(std::string("a\0x", 3), 1) + tail, 3, "a"},
        {"one value twice", three + Entry("a", 1) + Entry("b", 1) + Entry("c", 3), 2, "a"},
        {"upper case", three + Entry("A", 1) + tail, 3, "A"},
        {"more bytes than entries", three + Entry("a", 1) + tail + Entry("d", 4), 3, "a"},
        {"more entries than bytes", std::string(4, '\xFF') + Entry("a", 1) + tail, 3, "a"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(Load(row.bytes, false), row.count);
        EXPECT_EQ(Name(1), row.firstName);
    }
}

TEST_F(KvIdentifierHashFileTest, ASaveThatFailsLeavesTheOldFile)
{
    CKvIdentifier("entity");
    CKvIdentifier("name");
    int runs = 0;
    for (const EFaults faults : {EFaults::Once, EFaults::FromThenOn}) {
        int failing = 0;
        for (bool failed = true; failed; ++runs) {
            SCOPED_TRACE(++failing);
            m_folder.Write("hash", "old");
            const CKvFaultyDisk disk(failing, faults);
            Save(false);
            failed = disk.HasFailed();
            EXPECT_EQ(m_folder.Read("hash"), failed ? "old" : kLittle);
            EXPECT_EQ(m_folder.Names(), std::vector<std::string>{"hash"});
        }
    }
    EXPECT_EQ(runs, 2 * 5);  // begin, one write, close, commit, and a run without fault
}

}  // namespace
