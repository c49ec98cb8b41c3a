#include "scripttree/KvScriptTree.h"

#include <gtest/gtest.h>

#include <string>

#include "scripttree/KvScriptTreeNode.h"
#include "tests/scripttree/KvTreeText.h"

namespace {

CKvScriptTreeNode* AddChild(CKvScriptTreeNode* parent, const char* name, const char* attribute,
                            const char* value)
{
    CKvScriptTreeNode* child = parent->AddNewChild(Id(name));
    child->AddAttribute(CKvScriptTreeAttribute(Id(attribute), value));
    return child;
}

TEST(KvScriptTreeTest, PathsLeadToTheFirstNodeInDocumentOrder)
{
    CKvScriptTree tree;
    CKvScriptTreeNode* level = tree.CreateRootNode(Id("level"));
    level->AddAttribute(CKvScriptTreeAttribute(Id("title"), "Harbour"));
    CKvScriptTreeNode* first = AddChild(level, "settings", "gravity", "9.81");
    AddChild(first, "air", "drag", "1");
    CKvScriptTreeNode* second = AddChild(level, "Settings", "wind", "3");
    AddChild(AddChild(second, "water", "drag", "2"), "wave", "height", "7 m");

    const struct
    {
        const char* path;
        const char* value;  // null where nothing is found
    } rows[] = {
        {"level/title", "Harbour"},
        {"level/settings/gravity", "9.81"},
        {"\\level\\settings//gravity/", "9.81"},
        {"LEVEL/Settings/GRAVITY", "9.81"},
        {"level/settings/water/drag", "2"},  // the first settings lead to no water
        {"level/settings/water/wave/height", "7 m"},
        {"level/settings/wind", nullptr},  // the first settings count, though they have no wind
        {"level/settings/water/wave", nullptr},
        {"level/settings/water/wave/wave/height", nullptr},
        {"gravity", nullptr},
        {"settings/gravity", nullptr},
        {"other/settings/gravity", nullptr},
        {"level", nullptr},
        {"/\\/", nullptr},
        {"", nullptr},
    };
    for (const auto& row : rows) {
        TKvString<char> value("untouched");
        EXPECT_EQ(tree.GetValueAsString(row.path, value), row.value != nullptr) << row.path;
        EXPECT_EQ(value, row.value != nullptr ? row.value : "untouched") << row.path;
        EXPECT_FALSE(tree.GetValue(row.path)) << row.path;
    }

    float gravity = 0;
    int height = 0;
    EXPECT_TRUE(tree.GetValueAsFloat("level/settings/gravity", gravity));
    EXPECT_EQ(gravity, 9.81F);
    EXPECT_TRUE(tree.GetValueAsInt("level/settings/water/wave/height", height));
    EXPECT_EQ(height, 7);
    EXPECT_FALSE(tree.GetValueAsFloat("level/gravity", gravity));
    EXPECT_FALSE(tree.GetValueAsInt("level/gravity", height));
    EXPECT_EQ(gravity, 9.81F);
    EXPECT_EQ(height, 7);
    EXPECT_FALSE(CKvScriptTree().GetValueAsInt("level/title", height)) << "no root";
}

TEST(KvScriptTreeTest, AReplacedRootIsReleasedAndTheSameRootStays)
{
    CKvScriptTree tree;
    CKvScriptTreeNode* root = tree.CreateRootNode(Id("first"));
    root->AddNewChild(Id("child"));
    tree.SetRootNode(root);
    EXPECT_EQ(TreeText(tree), "first(child)");
    tree.CreateRootNode(tree.GetRootNode()->GetIdentifier());  // the name of the root that goes
    EXPECT_EQ(TreeText(tree), "first");
    tree.SetRootNode(new CKvScriptTreeNode(Id("second")));
    EXPECT_EQ(TreeText(tree), "second");
    tree.Empty();
    EXPECT_EQ(tree.GetRootNode(), nullptr);
    tree.Empty();
}

}  // namespace
