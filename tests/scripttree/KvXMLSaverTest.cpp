#include "scripttree/KvXMLSaver.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/KvFaultyDisk.h"
#include "tests/support/KvFullDevice.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

TEST(KvXMLSaverTest, SectionsNestAndValuesAreEscaped)
{
    const CKvTemporaryFolder folder;
    CKvXMLSaver saver;
    EXPECT_EQ(saver.getSectionName(), "");
    saver.addValue("lost", 1);  // the document has no attributes
    saver.beginSection("level");
    saver.addValue("version", 1);
    saver.addValue("version", 2);  // replaces
    saver.addValue("gravity", -9.5F);
    saver.beginSection(TKvString<char>("entity"));
    saver.addValue("name", TKvString<char>("<&\"'>\n &#x41; \xC3\xA9"));
    EXPECT_EQ(saver.getSectionName(), "entity");
    saver.endSection();
    EXPECT_EQ(saver.getSectionName(), "level");
    saver.beginSection("dummy");
    saver.endSection();
    EXPECT_TRUE(saver.save(folder.Path("a.xml").c_str()));
    EXPECT_EQ(folder.Read("a.xml"),
              "<level version=\"2\" gravity=\"-9.500000\">\n"
              "    <entity name='&lt;&amp;&quot;&apos;&gt;&#x0A; &amp;#x41; \xC3\xA9' />\n"
              "    <dummy />\n"
              "</level>\n");
}

TEST(KvXMLSaverTest, TheStackIsBoundedAtBothEnds)
{
    const CKvTemporaryFolder folder;
    CKvXMLSaver saver;
    std::string expected;
    for (int i = 1; i <= 33; ++i) {
        // The document and 31 sections fill the stack; what comes then is added but not opened.
        const int depth = i < 32 ? i - 1 : 31;
        expected += std::string(static_cast<std::size_t>(depth) * 4, ' ');
        expected += i < 32 ? "<a>\n" : "<a />\n";
        saver.beginSection("a");
    }
    for (int depth = 30; depth >= 0; --depth)
        expected += std::string(static_cast<std::size_t>(depth) * 4, ' ') + "</a>\n";
    for (int i = 0; i < 40; ++i)
        saver.endSection();
    saver.beginSection("lost");
    saver.addValue("lost", 1);
    EXPECT_EQ(saver.getSectionName(), "");
    EXPECT_TRUE(saver.save(folder.Path("a.xml").c_str()));
    EXPECT_EQ(folder.Read("a.xml"), expected);

    CKvXMLSaver cleared;
    cleared.beginSection("a");
    cleared.clear();
    cleared.clear();
    cleared.beginSection("late");
    cleared.addValue("late", 1);
    EXPECT_FALSE(cleared.save(folder.Path("a.xml").c_str()));
    EXPECT_EQ(folder.Read("a.xml"), expected);
}

TEST(KvXMLSaverTest, AFailedSaveSaysSoAndKeepsTheOldFile)
{
    CKvXMLSaver saver;
    saver.beginSection("a");
    EXPECT_NE(KvSaveToFullDevice([&](const char* path) { return saver.save(path); }), true);
    EXPECT_FALSE(saver.save("/nowhere/at/all.xml"));

    const CKvTemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "old");
    int failing = 0;
    for (bool failed = true; failed;) {
        CKvFaultyDisk disk(++failing, CKvFaultyDisk::EFaults::Once);
        const bool saved = saver.save(path.c_str());
        failed = disk.HasFailed();
        EXPECT_EQ(saved, !failed) << failing;
        EXPECT_EQ(folder.Read("a.xml"), failed ? "old" : "<a />\n") << failing;
        EXPECT_EQ(folder.Names().size(), 1U) << failing;
    }
    EXPECT_GE(failing, 4) << "begin, close and commit can fail";
}

}  // namespace
