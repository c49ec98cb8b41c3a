#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/KvIdentifier.h"
#include "core/KvIdentifierManager.h"
#include "tests/support/KvCompressedFiles.h"
#include "tests/support/KvDocumentedBytes.h"
#include "tests/support/KvFaultyDisk.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

using Names = std::vector<std::string>;

const std::string kDocument = std::string(KV_SOURCE_PATH) + "/docs/formats/identifier-hash-file.md";
const std::string kLittle = KvDocumentedBytes(kDocument, 0);
const std::string kBig = KvDocumentedBytes(kDocument, 1);

/// A name that no reader takes.
const std::string kTooLong(512, 'n');

/// What any other file gives is held by fuzz/HashFile.cpp and its corpus.
class KvIdentifierHashFileTest : public testing::Test
{
protected:
    KvIdentifierHashFileTest() { m_manager.Release(); }
    ~KvIdentifierHashFileTest() override { m_manager.Release(); }

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
