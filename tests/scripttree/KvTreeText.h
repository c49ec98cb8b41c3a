// Trees as one line of text, for tests to write down and compare:
//
//     level{version='2'}(entity{name='box'} 'some text' entity)

#pragma once

#include <string>

#include "core/KvIdentifier.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeNode.h"

inline CKvIdentifier Id(const char* name)
{
    return CKvIdentifier(name);
}

/// For the small trees of tests: recurses.
inline void AppendTreeText(const CKvScriptTreeNode& node, std::string& text)
{
    text += node.GetIdentifier().DebugString().GetText();
    for (int i = 0; i < node.GetAttributeCount(); ++i) {
        const CKvScriptTreeAttribute& attribute = node.GetAttribute(i);
        text += i == 0 ? "{" : " ";
        text += attribute.GetIdentifier().DebugString().GetText();
        text += "='";
        text += attribute.GetValue().GetText();
        text += i == node.GetAttributeCount() - 1 ? "'}" : "'";
    }
    if (!node.GetText().IsEmpty()) {
        text += "'";
        text += node.GetText().GetText();
        text += "'";
    }
    for (int i = 0; i < node.GetChildCount(); ++i) {
        text += i == 0 ? "(" : " ";
        AppendTreeText(*node.GetChild(i), text);
    }
    text += node.GetChildCount() > 0 ? ")" : "";
}

inline std::string TreeText(const CKvScriptTreeNode& node)
{
    std::string text;
    AppendTreeText(node, text);
    return text;
}

inline std::string TreeText(const CKvScriptTree& tree)
{
    return tree.GetRootNode() != nullptr ? TreeText(*tree.GetRootNode()) : "<empty>";
}
