// How a machine reads a document.

#include <utility>

#include "core/KvId.h"
#include "core/KvOutOfMemory.h"
#include "fsm/KvFSM.h"
#include "fsm/KvFSMContents.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvScriptTreeSerializerXML.h"

namespace {

CKvIdentifier ReadName(const CKvScriptTreeNode& node, const CKvIdentifier& attribute)
{
    return CKvIdentifier(node.GetAttributeValueAsString(attribute));
}

}  // namespace

bool CKvFSM::Initialize(const TKvString<char>& path)
{
    CKvScriptTree tree;
    return CKvScriptTreeSerializerXML().Load(tree, path) && LoadFromStream(tree);
}

bool CKvFSM::LoadFromStream(CKvScriptTree& tree)
{
    CKvScriptTreeNode* const root = tree.GetRootNode();
    if (root == nullptr || root->GetIdentifier() != KVID::GetSingleton().fsm)
        return false;
    return KvFalseWhenOutOfMemory([&] {
        ReadDocument(*root);
        ChangeState(m_defaultState);
        return true;
    });
}

void CKvFSM::ReadDocument(CKvScriptTreeNode& root)
{
    const KVID& ids = KVID::GetSingleton();
    GetContents();
    const std::shared_ptr<CKvFSMContents> contents = m_contents;  // game code may release it
    for (int i = 0; i < root.GetChildCount(); ++i) {
        CKvScriptTreeNode& child = *root.GetChild(i);
        if (child.GetIdentifier() == ids.state_list) {
            ReadStates(child);
        } else if (child.GetIdentifier() == ids.default_state) {
            if (CKvFSMState* const state = FindState(ReadName(child, ids.name)))
                m_defaultState = state;
        }
    }
    // Transitions may stand before the states that they name.
    for (int i = 0; i < root.GetChildCount() && m_factories.trigger; ++i) {
        CKvScriptTreeNode& child = *root.GetChild(i);
        if (child.GetIdentifier() == ids.state_transition_list)
            ReadTransitions(child);
    }
}

void CKvFSM::ReadStates(CKvScriptTreeNode& list)
{
    for (int i = 0; i < list.GetChildCount(); ++i) {
        CKvScriptTreeNode& node = *list.GetChild(i);
        std::unique_ptr<CKvFSMState> state;
        if (m_factories.state)
            state = m_factories.state(node, *this);
        if (state == nullptr)
            state = std::make_unique<CKvFSMState>(CKvIdentifier(), this);
        // Held first: a state that adds itself to the machine has one owner throughout.
        CKvFSMContents& contents = GetContents();
        contents.ReserveState();
        CKvFSMState* const held = state.release();
        contents.Hold(held, this);
        held->SerializeFrom(&node, this);
    }
}

void CKvFSM::ReadTransitions(CKvScriptTreeNode& list)
{
    for (int i = 0; i < list.GetChildCount(); ++i)
        ReadTransition(*list.GetChild(i));
}

void CKvFSM::ReadTransition(CKvScriptTreeNode& node)
{
    const KVID& ids = KVID::GetSingleton();
    CKvFSMState* const source = FindState(ReadName(node, ids.in));
    CKvFSMState* const reachable = FindState(ReadName(node, ids.out));
    if (source == nullptr || reachable == nullptr)
        return;
    auto made = m_factories.trigger(node.GetAttributeValueAsString(ids.trigger), node);
    if (made == nullptr)
        return;
    CKvTrigger* const trigger = CKvFSMContents::Keep(GetContents().triggers, std::move(made));
    trigger->Initialize(&node);
    auto transition =
        std::make_unique<CKvFSMStateTransition>(reachable, source, trigger, ReadActions(node), 0);
    source->AddStateTransition(
        CKvFSMContents::Keep(GetContents().transitions, std::move(transition)));
}

CKvArray<CKvAction*> CKvFSM::ReadActions(CKvScriptTreeNode& transition)
{
    CKvArray<CKvAction*> actions;
    for (int i = 0; i < transition.GetChildCount() && m_factories.action; ++i) {
        CKvScriptTreeNode& node = *transition.GetChild(i);
        if (node.GetIdentifier() != KVID::GetSingleton().action)
            continue;
        if (auto made = m_factories.action(node))
            actions.Add(CKvFSMContents::Keep(GetContents().actions, std::move(made)));
    }
    return actions;
}
