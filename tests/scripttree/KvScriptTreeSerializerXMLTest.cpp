#include "scripttree/KvScriptTreeSerializerXML.h"

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <array>
#include <new>
#include <string>

#include "core/KvId.h"
#include "file/KvFileHandle.h"
#include "tests/scripttree/KvAllocationWatch.h"
#include "tests/scripttree/KvTreeText.h"
#include "tests/support/KvFaultyDisk.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

using Serializer = CKvScriptTreeSerializerXML;

constexpr const char* kFails = "<empty>";

/// A document and the tree that becomes of it, or kFails.
struct CRow
{
    const char* text;
    const char* tree;
};

template <std::size_t N>
void ExpectTrees(const CRow (&rows)[N])
{
    Serializer serializer;
    CKvScriptTree tree;
    for (const CRow& row : rows) {
        tree.CreateRootNode(Id("old"));
        EXPECT_EQ(serializer.Parse(tree, row.text), row.tree != kFails) << row.text;
        EXPECT_EQ(TreeText(tree), row.tree) << row.text;
    }
}

void MakeOldTree(CKvScriptTree& tree)
{
    tree.CreateRootNode(Id("old"))->AddNewChild(Id("child"));
}

constexpr const char* kOldTree = "old(child)";

TEST(KvScriptTreeSerializerXMLTest, DocumentsBecomeTrees)
{
    ExpectTrees({
        {"<a x=\"1\" y='two' z=3/>", "a{x='1' y='two' z='3'}"},
        {"<A Name='1' name='2'/>", "a{name='1' name='2'}"},
        {"<a>hello<b/></a>", "a('hello' b)"},
        {"<a> two \n\t words </a>", "a('two words')"},
        {"<a> \n </a>", "a"},
        {"<a>one<!-- <b/> -->two</a>", "a('one' 'two')"},
        {"<a><![CDATA[ <b> &amp; ]]></a>", "a(' <b> &amp; ')"},
        {"<a><![CDATA[]]><b/></a>", "a( b)"},
        {"<a><?pi x?><!note></a>", "a(?pi x? !note)"},
        {"<a><?xml version='1.0'?><b/></a>", "a( b)"},
        {"<a b='&lt;&gt;&amp;&quot;&apos;&#65;&#x42;'>&lt;b&gt;</a>", "a{b='<>&\"'AB'}('<b>')"},
        {"\n<?xml version='1.0'?><!-- c --><!DOCTYPE a><a/><b/>", "a"},
        {"\xEF\xBB\xBF<a b='&#233;'/>", "a{b='\xC3\xA9'}"},
        {"<?xml encoding='utf-8'?><a b='&#233;'/>", "a{b='\xC3\xA9'}"},
        {"<?xml version='1.0'?><a b='&#233;'/>", "a{b='\xC3\xA9'}"},
        {"<?xml encoding='latin1'?><a b='&#233;'/>", "a{b='\xE9'}"},
        {"<a b='&#233;'/>", "a{b='\xE9'}"},
        {"", kFails},
        {" \n", kFails},
        {"text", kFails},
        {"text<a/>", kFails},
        {"<!-- c -->", kFails},
        {"<?xml version='1.0'?>", kFails},
        {"<a", kFails},
        {"<a>", kFails},
        {"<a>text", kFails},
        {"<a></b>", kFails},
        {"<a><b></a></b>", kFails},
        {"<a b/>", kFails},
        {"<a b='1/>", kFails},
        {"<a b='1' b='2'/>", kFails},
        {"<a/><b>", kFails},
    });
}

TEST(KvScriptTreeSerializerXMLTest, TheParsersOddWaysStayAsTheyAre)
{
    ExpectTrees({
        // Damage on which other versions of the parser hung, aborted or read past the text.
        {"\xEF\xBB\xBF<a\xEF/", kFails},
        {"<?xml ", kFails},
        // What follows the root is read only as far as it makes sense.
        {"<a/>text<b>", "a"},
        {"<a/><!-- open", "a"},
        {"<a/><?xml version='1", "a"},
        {"<!DOCTYPE a [<!ELEMENT b (c)>]><a/>", kFails},
        // References: too large, zero, a surrogate, unknown, bare, without ';'.
        {"\xEF\xBB\xBF<a b='x&#4294967361;y'/>", "a{b='xy'}"},
        {"\xEF\xBB\xBF<a b='x&#0;y'/>", "a{b='x'}"},
        {"\xEF\xBB\xBF<a b='&#xD800;'/>", "a{b='\xED\xA0\x80'}"},
        {"<a b='&foo;'>1 & 2</a>", "a{b='foo;'}('1  2')"},
        {"<a b=\"1&#65\" c=\"2\" d=\"&#66;\"/>", "a{b='1B'}"},
        {"<a b='&#12x;'/>", kFails},
        // A broken character takes the bytes behind it along.
        {"\xEF\xBB\xBF<a b=\"\xF0\"/>", kFails},
        {"\xEF\xBB\xBF<a b='\xF0'/>' c='2'/>", "a{b='\xF0'/>' c='2'}"},
    });
}

TEST(KvScriptTreeSerializerXMLTest, ATextOfTheTreeItselfCanBeParsed)
{
    CKvScriptTree tree;
    CKvScriptTreeNode* root = tree.CreateRootNode(Id("old"));
    root->AddAttribute(CKvScriptTreeAttribute(Id("document"), "<new/>"));
    EXPECT_TRUE(Serializer().Parse(tree, root->GetAttribute(0).GetValue()));
    EXPECT_EQ(TreeText(tree), "new");
}

TEST(KvScriptTreeSerializerXMLTest, DumpsAreIndentedAndUnescaped)
{
    CKvScriptTree tree;
    CKvScriptTreeNode* level = tree.CreateRootNode(Id("level"));
    level->AddAttribute(CKvScriptTreeAttribute(Id("version"), 2));
    CKvScriptTreeNode* entity = level->AddNewChild(Id("entity"));
    entity->AddAttribute(CKvScriptTreeAttribute(Id("name"), "<\"box\" & co>"));
    entity->AddAttribute(CKvScriptTreeAttribute(Id("kind"), ""));
    CKvScriptTreeNode* list = level->AddNewChild(Id("object_list"));
    list->AddNewChild(KVID::GetSingleton().null)->SetText("not written");
    list->AddNewChild(CKvIdentifier(UINT64_C(0x0123456789ABCDEF)))->AddNewChild(Id("dummy"));

    TKvString<char> text("old");
    EXPECT_TRUE(Serializer().Dump(tree, text));
    EXPECT_STREQ(text.GetText(),
                 "<level version=\"2\">\n"
                 "    <entity name=\"<\"box\" & co>\" kind=\"\"/>\n"
                 "    <object_list>\n"
                 "        </>\n"
                 "        <CRC<0123456789ABCDEF>>\n"
                 "            <dummy/>\n"
                 "        </CRC<0123456789ABCDEF>>\n"
                 "    </object_list>\n"
                 "</level>\n");
    EXPECT_FALSE(Serializer().Parse(tree, text)) << "unescaped values do not read back";

    EXPECT_FALSE(Serializer().Dump(tree, text)) << "no root";
}

TEST(KvScriptTreeSerializerXMLTest, ASavedTreeLoadsAgain)
{
    const CKvTemporaryFolder folder;
    const std::string path = folder.Path("a.xml");
    const TKvString<char> text = "<level version=\"2\">\n    <entity name=\"box\"/>\n</level>\n";
    CKvScriptTree tree;
    CKvScriptTree loaded;
    ASSERT_TRUE(Serializer().Parse(tree, text));
    EXPECT_TRUE(Serializer().Save(tree, path.c_str()));
    EXPECT_EQ(folder.Read("a.xml"), text.GetText());
    EXPECT_TRUE(Serializer().Load(loaded, path.c_str()));
    EXPECT_EQ(*loaded.GetRootNode(), *tree.GetRootNode());
    EXPECT_EQ(loaded.GetRootNode()->GetAttribute(0), CKvScriptTreeAttribute(Id("version"), "2"))
        << "attributes from a file are strings";
}

TEST(KvScriptTreeSerializerXMLTest, OnlyADocumentThatWasReadWholeTouchesTheTree)
{
    const CKvTemporaryFolder folder;
    const struct
    {
        const char* name;
        std::string path;
        const char* tree;
    } rows[] = {
        {"absent", folder.Path("absent.xml"), kOldTree},
        {"a folder", folder.Path(), kOldTree},
        {"no path", "", kOldTree},
        {"empty", folder.Write("empty.xml", ""), kOldTree},
        {"malformed", folder.Write("malformed.xml", "<a>"), kFails},
        {"binary", folder.Write("binary.xml", std::string("\0\1\2\3", 4)), kFails},
        {"zero byte", folder.Write("zero.xml", std::string("<a/>\0<b>", 8)), "a"},
        {"cut by a zero byte", folder.Write("cut.xml", std::string("<a>\0</a>", 8)), kFails},
    };
    for (const auto& row : rows) {
        CKvScriptTree tree;
        MakeOldTree(tree);
        EXPECT_EQ(Serializer().Load(tree, row.path.c_str()), std::string(row.tree) == "a")
            << row.name;
        EXPECT_EQ(TreeText(tree), row.tree) << row.name;
    }

    const std::string path = folder.Write("a.xml", "<a/>");
    int failing = 0;
    for (bool failed = true; failed;) {
        CKvScriptTree tree;
        MakeOldTree(tree);
        CKvFaultyDisk disk(++failing, CKvFaultyDisk::EFaults::Once);
        const bool loaded = Serializer().Load(tree, path.c_str());
        failed = disk.HasFailed();
        EXPECT_TRUE(loaded || failed) << failing;
        EXPECT_EQ(TreeText(tree), loaded ? "a" : kOldTree) << failing;
    }
    EXPECT_GT(failing, 5) << "open, size, read and close can fail";
}

TEST(KvScriptTreeSerializerXMLTest, AFailedSaveSaysSoAndKeepsTheOldFile)
{
    CKvScriptTree tree;
    MakeOldTree(tree);
    EXPECT_FALSE(Serializer().Save(tree, "/nowhere/at/all.xml"));

    for (const auto faults : {CKvFaultyDisk::EFaults::Once, CKvFaultyDisk::EFaults::FromThenOn}) {
        const CKvTemporaryFolder folder;
        const std::string path = folder.Write("a.xml", "precious");
        int failing = 0;
        for (bool failed = true; failed;) {
            CKvFaultyDisk disk(++failing, faults);
            const bool saved = Serializer().Save(tree, path.c_str());
            failed = disk.HasFailed();
            EXPECT_EQ(saved, !failed) << failing;
            EXPECT_EQ(folder.Read("a.xml"), failed ? "precious" : "<old>\n    <child/>\n</old>\n")
                << failing;
            EXPECT_EQ(folder.Names().size(), 1U) << failing;
        }
        EXPECT_GE(failing, 5) << "begin, write, close and commit can fail";
    }

    const CKvTemporaryFolder folder;
    const std::string path = folder.Write("a.xml", "precious");
    CKvScriptTree empty;
    EXPECT_FALSE(Serializer().Save(empty, path.c_str()));
    EXPECT_EQ(folder.Read("a.xml"), "") << "a tree without root leaves an empty file";
}

/// Says which of its operations were reached, and in place of which.
class CRoutedSerializer : public Serializer
{
public:
    bool LoadXmlFromFileHandle(CKvScriptTree& tree, CKvFileHandle* handle) override
    {
        route += "handle ";
        return Serializer::LoadXmlFromFileHandle(tree, handle);
    }

    bool Parse(CKvScriptTree&, const TKvString<char>& text) override
    {
        route += std::string("parse ") + text.GetText();
        return true;
    }

    bool Dump(CKvScriptTree&, TKvString<char>& out) override
    {
        out = "dumped";
        return true;
    }

    std::string route;
};

TEST(KvScriptTreeSerializerXMLTest, LoadAndSaveReachASubclass)
{
    const CKvTemporaryFolder folder;
    CRoutedSerializer serializer;
    CKvScriptTree tree;
    EXPECT_TRUE(serializer.Load(tree, folder.Write("a.xml", "not XML").c_str()));
    EXPECT_EQ(serializer.route, "handle parse not XML");
    EXPECT_TRUE(serializer.Save(tree, folder.Path("a.xml").c_str()));
    EXPECT_EQ(folder.Read("a.xml"), "dumped");
}

TEST(KvScriptTreeSerializerXMLTest, ParseSurvivesEveryFailingAllocationWithoutLeaksOfItsOwn)
{
    // Texts and values are too long for a string's own space, so that each allocates.
    const TKvString<char> text =
        "<?xml version='1.0'?><level name='a value that is long enough'><!-- c --><entity x='1'>"
        "a text that is long enough<child/></entity><?processing instruction?></level>";
    CKvScriptTree tree;
    ASSERT_TRUE(Serializer().Parse(tree, text)) << "and all names are registered now";

    // The parser leaks what it was building. It does so alone too, and no more of it is allowed.
    int parserLeaks = 0;
    std::array<char, 512> padded = {};
    std::copy_n(text.GetText(), text.GetLength(), padded.begin());
    for (int failing = 1; failing > 0;) {
        CKvAllocationWatch watch(failing);
        try {
            TiXmlDocument document;
            document.SetTabSize(0);
            document.Parse(padded.data(), nullptr, TIXML_ENCODING_UNKNOWN);
        } catch (const std::bad_alloc&) {
        }
        failing = watch.HasFailed() ? failing + 1 : 0;
        parserLeaks += watch.Stop();
    }

    int leaks = 0;
    int failing = 0;
    for (bool failed = true; failed;) {
        tree.Empty();
        MakeOldTree(tree);
        CKvAllocationWatch watch(++failing);
        const bool parsed = Serializer().Parse(tree, text);
        failed = watch.HasFailed();
        const bool isEmpty = tree.GetRootNode() == nullptr;
        tree.Empty();
        leaks += watch.Stop();
        EXPECT_EQ(parsed, !failed) << failing;
        EXPECT_EQ(isEmpty, failed) << failing;
    }
    EXPECT_GT(failing, 10);
    EXPECT_EQ(leaks, parserLeaks);
}

}  // namespace
