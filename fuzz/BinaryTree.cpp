// Binary images of script trees.

#include <vector>

#include "fuzz/KvTreeChecks.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvScriptTreeWalk.h"

namespace {

void RequireFitting(const CKvScriptTree& tree, std::size_t size)
{
    std::size_t least = 4;  // of the table of names
    for (TKvScriptTreeWalk walk(tree.GetRootNode()); walk.Next();) {
        if (!walk.IsLeaving())
            least += 16 + 13 * static_cast<std::size_t>(walk.GetNode()->GetAttributeCount());
    }
    KvRequire(least <= size, "a tree is no larger than its image");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    KvForgetNames();
    std::vector<std::uint8_t> image(data, data + size);
    const auto imageSize = static_cast<unsigned int>(size);
    CKvScriptTreeSerializerTML serializer;

    CKvScriptTree fresh;
    const bool loads = serializer.LoadTmlFromMemory(fresh, image.data(), imageSize);
    KvRequire(loads == (fresh.GetRootNode() != nullptr), "only what loads makes a root");

    CKvScriptTree merged;
    CKvScriptTreeNode& root = *merged.CreateRootNode(CKvIdentifier("old"));
    root.AddAttribute(CKvScriptTreeAttribute(CKvIdentifier("kept"), 1));
    root.AddNewChild(CKvIdentifier("child"));
    const CKvOwnedScriptTreeNode old(new CKvScriptTreeNode(root));
    KvRequire(serializer.LoadTmlFromMemory(merged, image.data(), imageSize) == loads,
              "a root changes nothing about whether an image loads");
    if (!loads) {
        KvRequire(root == *old, "an image that is refused leaves the tree as it was");
        return 0;
    }
    const CKvScriptTreeNode& added = *fresh.GetRootNode();
    KvRequire(root.GetAttributeCount() == added.GetAttributeCount() + 1 &&
                  root.GetChildCount() == added.GetChildCount() + 1 &&
                  root.GetIdentifier() == added.GetIdentifier(),
              "a root takes the image's content behind its own");
    RequireFitting(fresh, size);
    KvRequireBinaryRoundTrip(fresh);
    return 0;
}
