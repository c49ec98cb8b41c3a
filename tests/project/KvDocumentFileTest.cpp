// What keeps the user's documents: which texts can be stored, and what becomes of files that are no
// documents.

#include "project/KvDocumentFile.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "core/KvIdentifier.h"
#include "file/KvFileOperations.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvScriptTreeSerializerXML.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

using EFile = EKvDocumentFile;

/// Whether the plain writer and the loader give a value back, between others that it may spoil.
bool ComesBack(const TKvString<char>& value)
{
    const CKvIdentifier id("value");
    CKvScriptTree tree;
    CKvScriptTreeNode* root = tree.CreateRootNode(CKvIdentifier("root"));
    root->AddAttribute(CKvScriptTreeAttribute(id, value));
    root->AddNewChild(id)->AddAttribute(CKvScriptTreeAttribute(id, "x;y"));
    CKvScriptTree loaded;
    CKvScriptTreeSerializerXML xml;
    TKvString<char> text;
    return xml.Dump(tree, text) && xml.Parse(loaded, text) &&
           loaded.GetRootNode()->GetAttributeCount() == 1 &&
           loaded.GetRootNode()->GetAttributeValueAsString(id) == value;
}

TEST(KvDocumentFileTest, TextsThatCanBeStoredAreThoseThatComeBackButForOneThatIsNoXml)
{
    const char* const pieces[] = {
        "\"",   "'",    "<",    ">",    "&",        "&amp;", "&#65;",        "&#x41",    ";",
        "=",    "/>",   "<!--", "-->",  "]]>",      " ",     "\t",           "\n",       "\r",
        "\x01", "\x7F", "\xC3", "\xA9", "\xF0\x9F", "\xFF",  "\xEF\xBB\xBF", "<?xml ?>", "%s",
        "a",
    };
    std::mt19937 random(5);
    int stored = 0;
    for (int i = 0; i < 4000; ++i) {
        std::string text;
        for (auto left = random() % 6; left > 0; --left)
            text += pieces[random() % std::size(pieces)];
        const bool isXml = text.find('<') == std::string::npos;
        const bool canStore = KvCanStoreText(text.c_str());
        EXPECT_EQ(canStore, isXml && ComesBack(text.c_str())) << text;
        stored += canStore ? 1 : 0;
    }
    EXPECT_TRUE(stored > 1000 && stored < 3000) << stored;
}

TEST(KvDocumentFileTest, FilesAreLoadedSavedRefusedOrKeptAside)
{
    const struct
    {
        const char* content;
        EFile file;
        bool isSaved = true;
    } cases[] = {
        {"<a x='1'/>", EFile::Loaded},
        {"", EFile::Absent},
        {"<a><b", EFile::Damaged},
        {" <!-- -->", EFile::Damaged},
        {"<a x='\"'/>", EFile::Loaded, false},
        {"<a><b x='&lt;'/></a>", EFile::Loaded, false},
        {"<a>text</a>", EFile::Loaded, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.content);
        const CKvTemporaryFolder folder;
        const TKvString<char> path = folder.Write("f", c.content).c_str();
        CKvScriptTree tree;
        EXPECT_EQ(KvLoadDocumentFile(tree, path), c.file);
        EXPECT_EQ(tree.GetRootNode() != nullptr, c.file == EFile::Loaded);
        if (c.file != EFile::Loaded)
            tree.CreateRootNode(CKvIdentifier("new"));
        EXPECT_EQ(KvSaveDocumentFile(tree, path, c.file), c.isSaved);
        EXPECT_EQ(folder.Read("f") == c.content, !c.isSaved);
        EXPECT_EQ(folder.Read("f.damaged"), c.file == EFile::Damaged ? c.content : "<absent>");
    }
}

TEST(KvDocumentFileTest, DamagedFilesKeepTheirModeAndNeverReplaceEachOther)
{
    namespace fs = std::filesystem;
    constexpr fs::perms kPrivate = fs::perms::owner_read | fs::perms::owner_write;
    const CKvTemporaryFolder folder;
    CKvScriptTree tree;
    tree.CreateRootNode(CKvIdentifier("new"));
    for (const char* content : {"first", "second", "third"}) {
        const TKvString<char> path = folder.Write("f", content).c_str();
        fs::permissions(folder.Path("f"), kPrivate);
        EXPECT_TRUE(KvSaveDocumentFile(tree, path, EFile::Damaged));
    }
    EXPECT_FALSE(KvCopyFileToNew(folder.Path("f").c_str(), folder.Path("f.damaged").c_str()));
    EXPECT_EQ(folder.Read("f"), "<new/>\n");
    EXPECT_EQ(folder.Read("f.damaged"), "first");
    EXPECT_EQ(folder.Read("f.damaged.1"), "second");
    EXPECT_EQ(folder.Read("f.damaged.2"), "third");
    for (const std::string& name : folder.Names())
        EXPECT_EQ(fs::status(folder.Path(name)).permissions(), kPrivate) << name;
}

}  // namespace
