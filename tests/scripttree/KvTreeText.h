// Trees from XML, and as one line of text for tests to compare. What is written as
//
//     <level version='2' x=''><entity name='box'/>some text</level>
//
// is compared as
//
//     level{version=2}{x=}(entity{name=box} 'some text')

#pragma once

#include <gtest/gtest.h>

#include <string>

#include "core/KvIdentifier.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvScriptTreeSerializerXML.h"

/// What a tree was before an operation that may leave it alone.
inline constexpr const char* kOldXml = "<old x='1'><child/></old>";
inline constexpr const char* kOldTree = "old{x=1}(child)";

inline CKvIdentifier Id(const char* name)
{
    return CKvIdentifier(name);
}

class CParsedTree : public CKvScriptTree
{
public:
    explicit CParsedTree(const char* xml)
    {
        EXPECT_TRUE(CKvScriptTreeSerializerXML().Parse(*this, xml)) << xml;
    }
};

/// For the small trees of tests: recurses.
inline std::string TreeText(const CKvScriptTreeNode& node)
{
    std::string text = node.GetIdentifier().DebugString().GetText();
    for (int i = 0; i < node.GetAttributeCount(); ++i) {
        const CKvScriptTreeAttribute& attribute = node.GetAttribute(i);
        text.append("{").append(attribute.GetIdentifier().DebugString().GetText());
        text.append("=").append(attribute.GetValue().GetText()).append("}");
    }
    if (!node.GetText().IsEmpty())
        text.append("'").append(node.GetText().GetText()).append("'");
    for (int i = 0; i < node.GetChildCount(); ++i)
        text.append(i == 0 ? "(" : " ").append(TreeText(*node.GetChild(i)));
    return node.GetChildCount() > 0 ? text + ")" : text;
}

inline std::string TreeText(const CKvScriptTree& tree)
{
    return tree.GetRootNode() != nullptr ? TreeText(*tree.GetRootNode()) : "<empty>";
}
