// Visits a node and all below it in document order, on a stack of its own however deep they are.

#pragma once

#include <vector>

#include "scripttree/KvScriptTreeNode.h"

/// \a TNode is CKvScriptTreeNode, const or not. Each node is entered, then its children are
/// visited, then it is left:
///
///     for (TKvScriptTreeWalk walk(root); walk.Next();)
///         walk.IsLeaving() ? ... : ...;
///
/// The tree must stay as it is while it is being walked.
template <class TNode>
class TKvScriptTreeWalk
{
public:
    explicit TKvScriptTreeWalk(TNode* root) : m_root(root) {}

    /// Goes on to the next step; false after the root has been left.
    bool Next()
    {
        if (m_root != nullptr) {
            m_path.push_back({m_root, 0});
            m_root = nullptr;
            return true;
        }
        if (m_isLeaving)
            m_path.pop_back();
        if (m_path.empty())
            return false;
        TNode* child = m_path.back().node->GetChild(m_path.back().nextChild++);
        m_isLeaving = child == nullptr;
        if (child != nullptr)
            m_path.push_back({child, 0});
        return true;
    }

    /// The node that this step enters or leaves.
    TNode* GetNode() const { return m_path.back().node; }
    bool IsLeaving() const { return m_isLeaving; }

    /// 0 at the root.
    int GetDepth() const { return static_cast<int>(m_path.size()) - 1; }

private:
    struct CPlace
    {
        TNode* node;
        int nextChild;
    };

    TNode* m_root;
    std::vector<CPlace> m_path;
    bool m_isLeaving = false;
};
