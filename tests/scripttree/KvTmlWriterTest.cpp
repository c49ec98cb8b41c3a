#include "scripttree/KvTmlWriter.h"

#include <gtest/gtest.h>

#include "file/KvFile.h"
#include "scripttree/KvScriptTreeSerializerTML.h"
#include "tests/scripttree/KvTreeText.h"
#include "tests/support/KvTemporaryFolder.h"

TEST(KvTmlWriterTest, PiecesMakeTheDocumentThatSavingTheTreeMakes)
{
    const CKvTemporaryFolder folder;
    CParsedTree tree(
        "<piece x='1.5'><a y='text5'><b/></a><a y='text5'><b/></a><d z='-7'/><e/></piece>");
    const CKvScriptTreeNode& root = *tree.GetRootNode();
    // The file layer's flag works on each field, so it shows whether pieces keep them apart.
    for (const bool swap : {false, true}) {
        CKvFileSystemUnCached::SetSwapDWORDOnWrite(swap);
        CKvFile file;
        EXPECT_EQ(
            file.Open(folder.Path("pieces").c_str(), EKvFileSystemOpenMode::WriteBinary, false),
            EKvFileSystemError::Success);
        CKvTmlWriter writer(file.GetHandle(), swap);
        CKvTmlFragment fragment = writer.MakeFragment();
        writer.WriteNode(root, 4);
        writer.WriteTree(*root.GetChild(0), fragment);
        writer.WriteAgain(fragment);
        writer.WriteTree(*root.GetChild(2));
        writer.WriteTree(*root.GetChild(3), fragment);
        EXPECT_TRUE(writer.Finish());
        EXPECT_EQ(file.Close(), EKvFileSystemError::Success);
        EXPECT_TRUE(CKvScriptTreeSerializerTML().Save(tree, folder.Path("saved").c_str(), swap));
        CKvFileSystemUnCached::SetSwapDWORDOnWrite(false);
        EXPECT_EQ(folder.Read("pieces"), folder.Read("saved"));
    }
}
