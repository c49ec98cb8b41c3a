#include "bench/KvDepthChild.h"

#include <cstdlib>
#include <string_view>

#include "bench/KvMeasureInTurn.h"
#include "bench/KvMeasureProcesses.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvScriptTreeSerializerTML.h"
#include "scripttree/KvScriptTreeSerializerXML.h"

namespace {

void MakeChain(CKvScriptTree& tree, long depth)
{
    const CKvIdentifier name("n");
    CKvScriptTreeNode* node = tree.CreateRootNode(name);
    for (long i = 1; i < depth; ++i) {
        node->ExpectCounts(0, 1);
        node = node->AddNewChild(name);
    }
}

long DepthOf(const CKvScriptTree& tree)
{
    long depth = 0;
    for (const CKvScriptTreeNode* node = tree.GetRootNode(); node != nullptr;
         node = node->GetChild(0))
        ++depth;
    return depth;
}

bool RunBinary(CKvScriptTree& tree, long depth, const char* path)
{
    CKvScriptTreeSerializerTML binary;
    CKvScriptTree loaded;
    bool works = false;
    KvPrintSeconds(
        KvCpuSeconds([&] { works = binary.Save(tree, path, false) && binary.Load(loaded, path); }));
    return works && DepthOf(loaded) == depth;
}

bool RunDump(CKvScriptTree& tree, long /*depth*/, const char* /*path*/)
{
    CKvScriptTreeSerializerXML xml;
    TKvString<char> text;
    bool works = false;
    KvPrintSeconds(KvCpuSeconds([&] { works = xml.Dump(tree, text); }));
    return works;
}

bool RunCopy(CKvScriptTree& tree, long depth, const char* /*path*/)
{
    CKvScriptTree copy;
    CKvScriptTreeNode* root = copy.CreateRootNode(CKvIdentifier());
    KvPrintSeconds(KvCpuSeconds([&] { root->Copy(tree.GetRootNode()); }));
    return DepthOf(copy) == depth;
}

bool RunCompare(CKvScriptTree& tree, long depth, const char* /*path*/)
{
    CKvScriptTree other;
    MakeChain(other, depth);
    bool equal = false;
    KvPrintSeconds(KvCpuSeconds([&] { equal = *tree.GetRootNode() == *other.GetRootNode(); }));
    return equal;
}

bool RunRelease(CKvScriptTree& tree, long /*depth*/, const char* /*path*/)
{
    KvPrintSeconds(KvCpuSeconds([&] { tree.Empty(); }));
    return tree.GetRootNode() == nullptr;
}

struct COperation
{
    std::string_view name;
    bool (*run)(CKvScriptTree& tree, long depth, const char* path);
};

constexpr COperation kOperations[] = {
    {"binary", RunBinary},   {"dump", RunDump},       {"copy", RunCopy},
    {"compare", RunCompare}, {"release", RunRelease},
};

}  // namespace

bool KvRunDepth(std::span<const char* const> arguments)
{
    if (arguments.size() != 3)
        return false;
    for (const COperation& operation : kOperations) {
        if (operation.name != arguments[0])
            continue;
        const long depth = std::strtol(arguments[1], nullptr, 10);
        CKvScriptTree tree;
        MakeChain(tree, depth);
        return operation.run(tree, depth, arguments[2]);
    }
    return false;
}
