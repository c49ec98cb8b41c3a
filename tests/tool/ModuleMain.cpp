// A module that is linked with nothing of ours: what it uses, the executable that loads it exports.
// Loaded into the program, it builds a tree and saves it to the path in KV_MODULE_OUTPUT.

#include <cstdlib>

#include "core/KvId.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvScriptTreeSerializerTML.h"

namespace {

struct CBuildsATree
{
    CBuildsATree()
    {
        const char* path = std::getenv("KV_MODULE_OUTPUT");
        if (path == nullptr)
            return;
        CKvScriptTree tree;
        CKvScriptTreeNode* root = tree.CreateRootNode(KVID::GetSingleton().entity);
        root->AddAttribute(CKvScriptTreeAttribute(KVID::GetSingleton().name, "box"));
        root->AddAttribute(CKvScriptTreeAttribute(KVID::GetSingleton().count, 3));
        CKvScriptTreeSerializerTML serializer;
        if (!serializer.Save(tree, path, false))
            std::abort();
    }
};

const CBuildsATree s_atLoad;

}  // namespace
