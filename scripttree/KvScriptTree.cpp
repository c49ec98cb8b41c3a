#include "scripttree/KvScriptTree.h"

#include <string_view>
#include <vector>

#include "core/KvNumberText.h"
#include "scripttree/KvScriptTreeNode.h"

namespace {

std::vector<CKvIdentifier> SplitPath(const TKvString<char>& path)
{
    constexpr std::string_view kSeparators = "/\\";
    const std::string_view text(path.GetText());
    std::vector<CKvIdentifier> tokens;
    std::size_t start = text.find_first_not_of(kSeparators);
    while (start != std::string_view::npos) {
        const std::size_t end = text.find_first_of(kSeparators, start);
        const std::string_view token = text.substr(start, end - start);
        tokens.emplace_back(TKvString<char>(token.data(), static_cast<int>(token.size())));
        start = text.find_first_not_of(kSeparators, end);
    }
    return tokens;
}

/// The first node whose names from the root down are \a names, depth first; or null.
const CKvScriptTreeNode* FindNode(const CKvScriptTreeNode* root,
                                  const std::vector<CKvIdentifier>& names)
{
    struct CPlace
    {
        const CKvScriptTreeNode* node;
        int nextChild;
    };
    if (root == nullptr || names.empty() || root->GetIdentifier() != names[0])
        return nullptr;
    std::vector<CPlace> path = {{root, 0}};
    while (!path.empty()) {
        if (path.size() == names.size())
            return path.back().node;
        const CKvScriptTreeNode* child = path.back().node->GetChild(path.back().nextChild++);
        if (child == nullptr)
            path.pop_back();
        else if (child->GetIdentifier() == names[path.size()])
            path.push_back({child, 0});
    }
    return nullptr;
}

}  // namespace

CKvScriptTree::~CKvScriptTree()
{
    Empty();
}

CKvScriptTreeNode* CKvScriptTree::CreateRootNode(const CKvIdentifier& identifier)
{
    SetRootNode(new CKvScriptTreeNode(identifier));
    return m_root;
}

void CKvScriptTree::SetRootNode(CKvScriptTreeNode* root)
{
    if (root == m_root)
        return;
    Empty();
    m_root = root;
}

void CKvScriptTree::Empty()
{
    if (m_root != nullptr)
        CKvScriptTreeNodeRelease()(m_root);
    m_root = nullptr;
}

bool CKvScriptTree::GetValueAsString(const TKvString<char>& path, TKvString<char>& out) const
{
    std::vector<CKvIdentifier> names = SplitPath(path);
    if (names.empty())
        return false;
    const CKvIdentifier attribute = names.back();
    names.pop_back();
    const CKvScriptTreeNode* node = FindNode(m_root, names);
    return node != nullptr && node->GetAttributeValueAsString(attribute, out);
}

bool CKvScriptTree::GetValueAsFloat(const TKvString<char>& path, float& out) const
{
    TKvString<char> text;
    if (!GetValueAsString(path, text))
        return false;
    out = kvStringToFloat(text.GetText());
    return true;
}

bool CKvScriptTree::GetValueAsInt(const TKvString<char>& path, int& out) const
{
    TKvString<char> text;
    if (!GetValueAsString(path, text))
        return false;
    out = kvStringToS32(text.GetText());
    return true;
}

bool CKvScriptTree::GetValue(const TKvString<char>&) const
{
    return false;
}
