// Loads and saves of script trees with each disk operation and each allocation failing in turn.

#include <gtest/gtest.h>
#include <functional>
#include <string>
#include <vector>

#include "scripttree/KvScriptTreeSerializerTML.h"
#include "scripttree/KvScriptTreeSerializerXML.h"
#include "scripttree/KvXMLSaver.h"
#include "tests/scripttree/KvAllocationWatch.h"
#include "tests/scripttree/KvTreeText.h"
#include "tests/support/KvFaultyDisk.h"
#include "tests/support/KvTemporaryFolder.h"
#include "tests/support/KvUnprivileged.h"

namespace {

using EFaults = CKvFaultyDisk::EFaults;

/// Texts and values are too long for a string's own space, so that each allocates.
constexpr const char* kXml =
    "<?xml version='1.0'?><level name='a value that is long enough'><!-- c --><entity x='&amp;'>"
    "a text &lt; that is long enough<child/></entity><?processing instruction?></level>";

class KvScriptTreeFailureTest : public testing::Test
{
protected:
    KvScriptTreeFailureTest() { m_xmlSaver.beginSection("section"); }

    /// Saves over an old file with the fault that \a makeFault gives for 1, 2, ... until it did not
    /// have to happen.
    template <class TMakeFault>
    void ExpectFailedSavesKeepTheOldFile(TMakeFault makeFault)
    {
        for (const auto& save : m_saves) {
            ASSERT_TRUE(save(m_path)) << "and all names are registered now";
            const std::string complete = m_folder.Read("file");
            int failing = 0;
            for (bool failed = true; failed;) {
                m_folder.Write("file", "old");
                auto fault = makeFault(++failing);
                const bool saved = save(m_path);
                failed = fault.HasFailed();
                EXPECT_EQ(CountLeaks(fault), 0) << failing;
                EXPECT_EQ(saved, !failed) << failing << " of " << complete;
                EXPECT_EQ(m_folder.Read("file"), failed ? "old" : complete) << failing;
                EXPECT_EQ(m_folder.Names().size(), 1U) << failing << " of " << complete;
            }
            EXPECT_GE(failing, 4) << "begin, close and commit can fail";
        }
    }

    static int CountLeaks(CKvAllocationWatch& watch) { return watch.Stop(); }
    static int CountLeaks(const CKvFaultyDisk&) { return 0; }

    const CKvTemporaryFolder m_folder;
    const TKvString<char> m_path = m_folder.Path("file").c_str();
    CParsedTree m_tree{kXml};
    CKvScriptTreeSerializerTML m_tml;
    CKvScriptTreeSerializerXML m_xml;
    CKvXMLSaver m_xmlSaver;
    const std::vector<std::function<bool(const TKvString<char>& path)>> m_saves = {
        [this](const TKvString<char>& path) { return m_tml.Save(m_tree, path, false); },
        [this](const TKvString<char>& path) { return m_xml.Save(m_tree, path); },
        [this](const TKvString<char>& path) { return m_xmlSaver.save(path); },
    };
};

TEST_F(KvScriptTreeFailureTest, SavesNoticeWhatTheDiskLost)
{
    ExpectFailedSavesKeepTheOldFile([](int n) { return CKvFaultyDisk(n, EFaults::Once); });
    ExpectFailedSavesKeepTheOldFile([](int n) { return CKvFaultyDisk(n, EFaults::FromThenOn); });
    for (const auto& save : m_saves) {
        EXPECT_FALSE(save("/nowhere/at/all"));
        EXPECT_EQ(KvRunUnprivileged([&] { return save("/dev/full") ? 1 : 0; }), 0);
    }
}

TEST_F(KvScriptTreeFailureTest, SavesOutliveEveryFailingAllocation)
{
    ExpectFailedSavesKeepTheOldFile([](int n) { return CKvAllocationWatch(n); });
}

TEST_F(KvScriptTreeFailureTest, AFileThatCannotBeReadWholeLeavesTheTreeAsItWas)
{
    const auto sweep = [this](auto& serializer, const std::string& loadedRoot) {
        int failing = 0;
        for (bool failed = true; failed;) {
            CParsedTree tree(kOldXml);
            CKvFaultyDisk disk(++failing, EFaults::Once);
            const bool loaded = serializer.Load(tree, m_path);
            failed = disk.HasFailed();
            EXPECT_TRUE(loaded || failed) << failing;
            EXPECT_TRUE(TreeText(tree).starts_with(loaded ? loadedRoot : kOldTree)) << failing;
        }
        EXPECT_GT(failing, 5) << "open, size, read and close can fail";
    };
    m_folder.Write("file", kXml);
    sweep(m_xml, "level{name=a value that is long enough}(");
    ASSERT_TRUE(m_tml.Save(m_tree, m_path, false));
    sweep(m_tml, "level{x=1}{name=a value that is long enough}(child ");
}

/// Gives the number of blocks that all the failed loads together left behind.
template <class TLoad>
int FailEachAllocation(TLoad load, const std::string& treeWhenFailed)
{
    int leaks = 0;
    int failing = 0;
    for (bool failed = true; failed;) {
        CParsedTree tree(kOldXml);
        CKvAllocationWatch watch(++failing);
        const bool loaded = load(tree);
        failed = watch.HasFailed();
        if (!failed)
            tree.Empty();
        leaks += watch.Stop();
        EXPECT_EQ(loaded, !failed) << failing;
        EXPECT_EQ(TreeText(tree), failed ? treeWhenFailed : "<empty>") << failing;
    }
    EXPECT_GT(failing, 10);
    return leaks;
}

TEST_F(KvScriptTreeFailureTest, LoadsOutliveEveryFailingAllocation)
{
    ASSERT_TRUE(m_tml.Save(m_tree, m_path, false));
    const auto loadTml = [this](CKvScriptTree& tree) { return m_tml.Load(tree, m_path); };
    EXPECT_EQ(FailEachAllocation(loadTml, kOldTree), 0);

    const TKvString<char> text = kXml;
    const auto parse = [&](CKvScriptTree& tree) { return m_xml.Parse(tree, text); };
    EXPECT_EQ(FailEachAllocation(parse, "<empty>"), 0);
}

}  // namespace
