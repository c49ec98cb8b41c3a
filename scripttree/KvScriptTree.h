// One document: a tree of named nodes, with reads of single values by path.

#pragma once

#include "core/KvString.h"

class CKvIdentifier;
class CKvScriptTreeNode;

/// The destructor is the only virtual function; the root is the only field. A document is copied
/// node by node, not as a whole.
class CKvScriptTree
{
public:
    CKvScriptTree() = default;
    CKvScriptTree(const CKvScriptTree&) = delete;
    CKvScriptTree& operator=(const CKvScriptTree&) = delete;
    virtual ~CKvScriptTree();

    /// Makes a node the root and gives it. A root that was there is released.
    CKvScriptTreeNode* CreateRootNode(const CKvIdentifier& identifier);

    /// Null for an empty document.
    CKvScriptTreeNode* GetRootNode() const { return m_root; }

    /// Ownership: the tree takes the node. Another root that was there is released.
    void SetRootNode(CKvScriptTreeNode* root);

    /// Releases the whole tree.
    void Empty();

    // --- Path reads. A path names nodes from the root down and, last, an attribute:
    // "level/settings/gravity". '/' and '\' both separate, runs of them count once. The first node
    // in document order that the path leads to counts. False, with the output untouched, when there
    // is no such node or attribute.

    bool GetValueAsString(const TKvString<char>& path, TKvString<char>& out) const;
    bool GetValueAsFloat(const TKvString<char>& path, float& out) const;
    bool GetValueAsInt(const TKvString<char>& path, int& out) const;

    /// False for every path: a path alone reads nothing.
    bool GetValue(const TKvString<char>& path) const;

private:
    CKvScriptTreeNode* m_root = nullptr;
};
