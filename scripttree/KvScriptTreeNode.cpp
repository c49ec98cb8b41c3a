#include "scripttree/KvScriptTreeNode.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "core/KvId.h"
#include "math/KvColor.h"
#include "scripttree/KvScriptTreeWalk.h"

namespace {

/// Whether the text of \a node's attribute, taken as an identifier, equals \a value.
bool HasAttributeValue(const CKvScriptTreeNode& node, const CKvIdentifier& attribute,
                       const CKvIdentifier& value)
{
    return CKvIdentifier(node.GetAttributeValueAsString(attribute)) == value;
}

/// Fills \a children from a node's list.
template <class TNode>
void CollectById(const CKvArray<CKvScriptTreeNode*>& all, const CKvIdentifier& identifier,
                 CKvArray<TNode*>& children)
{
    children.Clear();
    for (CKvScriptTreeNode* child : all) {
        if (child->GetIdentifier() == identifier)
            children.Add(child);
    }
}

}  // namespace

CKvScriptTreeNode::CKvScriptTreeNode() : m_identifier(KVID::GetSingleton().null) {}

CKvScriptTreeNode::CKvScriptTreeNode(const CKvScriptTreeNode& other)
{
    Copy(&other);
}

CKvScriptTreeNode& CKvScriptTreeNode::operator=(const CKvScriptTreeNode& other)
{
    if (this == &other)
        return *this;
    CKvScriptTreeNode copy(other);  // before the old children go: other may be one of them
    Empty();
    m_identifier = copy.m_identifier;
    m_attributes = std::move(copy.m_attributes);
    m_children = std::move(copy.m_children);
    m_text = std::move(copy.m_text);
    return *this;
}

CKvScriptTreeNode::~CKvScriptTreeNode() = default;

void CKvScriptTreeNode::ExpectCounts(int attributeCount, int childCount)
{
    m_attributes.SetGrowthStep(attributeCount);
    m_children.SetGrowthStep(childCount);
}

const CKvScriptTreeAttribute& CKvScriptTreeNode::GetAttribute(int index) const
{
    static const auto* const s_empty = new CKvScriptTreeAttribute;
    return index >= 0 && index < m_attributes.GetCount() ? m_attributes[index] : *s_empty;
}

CKvScriptTreeAttribute& CKvScriptTreeNode::GetAttribute(int index)
{
    static auto* const s_empty = new CKvScriptTreeAttribute;
    if (index >= 0 && index < m_attributes.GetCount())
        return m_attributes[index];
    *s_empty = CKvScriptTreeAttribute();  // whatever a caller put into it before
    return *s_empty;
}

const CKvScriptTreeAttribute* CKvScriptTreeNode::FindAttribute(
    const CKvIdentifier& identifier) const
{
    for (const CKvScriptTreeAttribute& attribute : m_attributes) {
        if (attribute.GetIdentifier() == identifier)
            return &attribute;
    }
    return nullptr;
}

CKvScriptTreeAttribute* CKvScriptTreeNode::FindAttribute(const CKvIdentifier& identifier)
{
    return const_cast<CKvScriptTreeAttribute*>(std::as_const(*this).FindAttribute(identifier));
}

void CKvScriptTreeNode::RemoveAttribute(const CKvScriptTreeAttribute& attribute)
{
    for (int i = 0; i < m_attributes.GetCount(); ++i) {
        if (m_attributes[i] == attribute) {
            m_attributes.RemoveAt(i);
            return;
        }
    }
}

void CKvScriptTreeNode::AddChild(CKvScriptTreeNode* child)
{
    if (child != nullptr)
        m_children.Add(child);
}

void CKvScriptTreeNode::AddChild(const CKvIdentifier& identifier, const CKvRGB<float>& color)
{
    const KVID& id = KVID::GetSingleton();
    CKvScriptTreeNode* child = AddNewChild(identifier);
    child->AddAttribute(CKvScriptTreeAttribute(id.red, color.r));
    child->AddAttribute(CKvScriptTreeAttribute(id.green, color.g));
    child->AddAttribute(CKvScriptTreeAttribute(id.blue, color.b));
}

CKvScriptTreeNode* CKvScriptTreeNode::AddNewChild(const CKvIdentifier& identifier)
{
    auto child = std::make_unique<CKvScriptTreeNode>(identifier);
    m_children.Add(child.get());
    return child.release();
}

void CKvScriptTreeNode::AddChildrenArray(CKvArray<CKvScriptTreeNode*> children)
{
    CKvScriptTreeNode** end = std::remove(children.begin(), children.end(), nullptr);
    std::for_each(children.begin(), end, [&](CKvScriptTreeNode* child) { AddChild(child); });
}

CKvScriptTreeNode* CKvScriptTreeNode::GetChild(int index) const
{
    return index >= 0 && index < m_children.GetCount() ? m_children[index] : nullptr;
}

CKvScriptTreeNode* CKvScriptTreeNode::FindChild(const CKvIdentifier& identifier) const
{
    for (CKvScriptTreeNode* child : m_children) {
        if (child->m_identifier == identifier)
            return child;
    }
    return nullptr;
}

int CKvScriptTreeNode::GetChildrenCountById(const CKvIdentifier& identifier) const
{
    int count = 0;
    for (const CKvScriptTreeNode* child : m_children)
        count += child->m_identifier == identifier ? 1 : 0;
    return count;
}

void CKvScriptTreeNode::GetChildrenByIdArray(const CKvIdentifier& identifier,
                                             CKvArray<CKvScriptTreeNode*>& children)
{
    CollectById(m_children, identifier, children);
}

void CKvScriptTreeNode::GetChildrenByIdArray(const CKvIdentifier& identifier,
                                             CKvArray<const CKvScriptTreeNode*>& children) const
{
    CollectById(m_children, identifier, children);
}

void CKvScriptTreeNode::RemoveChild(int index)
{
    if (index >= 0 && index < m_children.GetCount())
        m_children.RemoveAt(index);
}

void CKvScriptTreeNode::RemoveChild(CKvScriptTreeNode* child)
{
    for (int i = 0; i < m_children.GetCount(); ++i) {
        if (m_children[i] == child) {
            m_children.RemoveAt(i);
            return;
        }
    }
}

void CKvScriptTreeNode::RemoveChildrenById(const CKvIdentifier& identifier)
{
    CKvScriptTreeNode** kept = std::remove_if(
        m_children.begin(), m_children.end(),
        [&](const CKvScriptTreeNode* child) { return child->m_identifier == identifier; });
    while (m_children.end() != kept)
        m_children.RemoveLast();
}

/// Goes down to a leaf, deletes it and goes on with its parent. The way back up is kept in the
/// parents' own lists, in the place of the child being released (pointer reversal; Schorr and
/// Waite, "An efficient machine-independent procedure for garbage collection", 1967), so that
/// releasing needs neither stack nor memory.
void CKvScriptTreeNode::Empty()
{
    CKvScriptTreeNode* node = this;
    CKvScriptTreeNode* parent = nullptr;
    for (;;) {
        if (!node->m_children.IsEmpty()) {
            CKvScriptTreeNode*& last = node->m_children[node->m_children.GetCount() - 1];
            CKvScriptTreeNode* child = std::exchange(last, parent);
            parent = std::exchange(node, child);
            continue;
        }
        if (node == this)
            break;
        delete node;
        node = parent;
        parent = node->m_children[node->m_children.GetCount() - 1];
        node->m_children.RemoveLast();
    }
    m_children.Clear();
}

CKvScriptTreeNode* CKvScriptTreeNode::FindChildByAttribute(const CKvIdentifier& attribute,
                                                           const CKvIdentifier& value) const
{
    for (CKvScriptTreeNode* child : m_children) {
        if (HasAttributeValue(*child, attribute, value))
            return child;
    }
    return nullptr;
}

CKvScriptTreeNode* CKvScriptTreeNode::FindChildByAttribute(const CKvIdentifier& attribute,
                                                           const CKvIdentifier& value,
                                                           bool recursive)
{
    if (!recursive)
        return FindChildByAttribute(attribute, value);
    TKvScriptTreeWalk walk(this);
    walk.Next();  // this node is no candidate itself
    while (walk.Next()) {
        if (!walk.IsLeaving() && HasAttributeValue(*walk.GetNode(), attribute, value))
            return walk.GetNode();
    }
    return nullptr;
}

const CKvScriptTreeNode* CKvScriptTreeNode::FindChildByIdAndAttributeValue(
    const CKvIdentifier& childName, const CKvIdentifier& attribute,
    const CKvIdentifier& value) const
{
    for (const CKvScriptTreeNode* child : m_children) {
        if (child->m_identifier == childName && HasAttributeValue(*child, attribute, value))
            return child;
    }
    return nullptr;
}

CKvScriptTreeNode* CKvScriptTreeNode::FindChildByIdAndAttributeValue(const CKvIdentifier& childName,
                                                                     const CKvIdentifier& attribute,
                                                                     const CKvIdentifier& value)
{
    return const_cast<CKvScriptTreeNode*>(
        std::as_const(*this).FindChildByIdAndAttributeValue(childName, attribute, value));
}

void CKvScriptTreeNode::CopyOwn(const CKvScriptTreeNode& source)
{
    m_identifier = source.m_identifier;
    m_attributes = source.m_attributes;
    m_text = source.m_text;
}

/// The own children followed by those of \a other.
CKvArray<CKvScriptTreeNode*> CKvScriptTreeNode::JoinChildren(const CKvScriptTreeNode& other) const
{
    CKvArray<CKvScriptTreeNode*> all;
    all.SetGrowthStep(m_children.GetCount() + other.m_children.GetCount());
    for (const CKvArray<CKvScriptTreeNode*>* list : {&m_children, &other.m_children}) {
        for (CKvScriptTreeNode* child : *list)
            all.Add(child);
    }
    return all;
}

void CKvScriptTreeNode::Copy(const CKvScriptTreeNode* source)
{
    // The copy grows apart from this node, so that source may contain it or be contained in it.
    const CKvOwnedScriptTreeNode root(new CKvScriptTreeNode(source->m_identifier));
    std::vector<CKvScriptTreeNode*> path;
    for (TKvScriptTreeWalk walk(source); walk.Next();) {
        if (walk.IsLeaving()) {
            path.pop_back();
            continue;
        }
        const CKvScriptTreeNode& original = *walk.GetNode();
        path.push_back(path.empty() ? root.get() : path.back()->AddNewChild(original.m_identifier));
        path.back()->CopyOwn(original);
        path.back()->m_children.SetGrowthStep(original.GetChildCount());
    }

    CKvArray<CKvScriptTreeNode*> children = JoinChildren(*root);
    root->m_children.Clear();
    m_identifier = root->m_identifier;
    m_attributes = std::move(root->m_attributes);
    m_children = std::move(children);
    m_text = std::move(root->m_text);
}

void CKvScriptTreeNode::Absorb(CKvScriptTreeNode& other)
{
    CKvArray<CKvScriptTreeNode*> children = JoinChildren(other);
    CKvArray<CKvScriptTreeAttribute> attributes;
    attributes.SetGrowthStep(m_attributes.GetCount() + other.m_attributes.GetCount());
    // The first append makes room for all: from there on nothing fails.
    for (CKvArray<CKvScriptTreeAttribute>* list : {&m_attributes, &other.m_attributes}) {
        for (CKvScriptTreeAttribute& attribute : *list)
            attributes.Add(std::move(attribute));
        list->Clear();
    }
    other.m_children.Clear();
    m_identifier = other.m_identifier;
    m_attributes = std::move(attributes);
    m_children = std::move(children);
}

bool CKvScriptTreeNode::operator==(const CKvScriptTreeNode& other) const
{
    using CPair = std::pair<const CKvScriptTreeNode*, const CKvScriptTreeNode*>;
    std::vector<CPair> pending = {{this, &other}};
    while (!pending.empty()) {
        const auto [left, right] = pending.back();
        pending.pop_back();
        if (left == right)
            continue;
        if (left->m_identifier != right->m_identifier || left->m_text != right->m_text ||
            left->GetChildCount() != right->GetChildCount() ||
            !std::equal(left->m_attributes.begin(), left->m_attributes.end(),
                        right->m_attributes.begin(), right->m_attributes.end()))
            return false;
        for (int i = left->GetChildCount(); i-- > 0;)
            pending.emplace_back(left->m_children[i], right->m_children[i]);
    }
    return true;
}

void CKvScriptTreeNodeRelease::operator()(CKvScriptTreeNode* node) const
{
    node->Empty();
    delete node;
}
