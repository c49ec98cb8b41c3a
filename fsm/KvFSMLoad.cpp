// How a machine reads a document.

#include <cstdint>
#include <unordered_map>
#include <utility>

#include "core/KvId.h"
#include "core/KvOutOfMemory.h"
#include "core/KvSaltedHash.h"
#include "fsm/KvFSM.h"
#include "fsm/KvFSMContents.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvScriptTreeSerializerXML.h"

/// One load. What it calls of the game may release, destroy or move the machine: then there is none
/// left to read for, and the rest of the document is passed over.
class CKvFSM::CReader
{
public:
    explicit CReader(CKvFSM& fsm)
        : m_fsm(fsm), m_factories(fsm.m_factories), m_contents(fsm.GetContents().shared_from_this())
    {
    }

    void Read(const CKvScriptTreeNode& root);

    /// Whether the machine still has what was read.
    bool HasMachine() const { return m_contents->IsSharedBy(&m_fsm); }

private:
    void ReadStates(const CKvScriptTreeNode& list);
    void ReadTransitions(const CKvScriptTreeNode& list);
    void ReadTransition(CKvScriptTreeNode& node);
    CKvArray<CKvAction*> ReadActions(const CKvScriptTreeNode& transition);

    /// What FindState() finds by the name in an attribute, without walking the list.
    CKvFSMState* FindState(const CKvScriptTreeNode& node, const CKvIdentifier& attribute);

    CKvFSM& m_fsm;  // to be used only while HasMachine()
    const CKvFSMFactories m_factories;
    const std::shared_ptr<CKvFSMContents> m_contents;

    /// The first so many states of the machine by their names, of those of one name the first.
    std::unordered_map<std::uint64_t, CKvFSMState*, CKvSaltedHash> m_states;
    int m_namedCount = 0;
};

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
        CReader reader(*this);
        reader.Read(*root);
        if (reader.HasMachine())
            ChangeState(m_defaultState);
        return true;
    });
}

void CKvFSM::CReader::Read(const CKvScriptTreeNode& root)
{
    const KVID& ids = KVID::GetSingleton();
    for (int i = 0; i < root.GetChildCount() && HasMachine(); ++i) {
        const CKvScriptTreeNode& child = *root.GetChild(i);
        if (child.GetIdentifier() == ids.state_list) {
            ReadStates(child);
        } else if (child.GetIdentifier() == ids.default_state) {
            if (CKvFSMState* const state = FindState(child, ids.name))
                m_fsm.m_defaultState = state;
        }
    }
    // Transitions may stand before the states that they name.
    for (int i = 0; i < root.GetChildCount() && m_factories.trigger; ++i) {
        const CKvScriptTreeNode& child = *root.GetChild(i);
        if (child.GetIdentifier() == ids.state_transition_list)
            ReadTransitions(child);
    }
}

void CKvFSM::CReader::ReadStates(const CKvScriptTreeNode& list)
{
    for (int i = 0; i < list.GetChildCount() && HasMachine(); ++i) {
        CKvScriptTreeNode& node = *list.GetChild(i);
        std::unique_ptr<CKvFSMState> state;
        if (m_factories.state)
            state = m_factories.state(node, m_fsm);
        if (!HasMachine())
            return;
        if (state == nullptr)
            state = std::make_unique<CKvFSMState>(CKvIdentifier(), &m_fsm);
        // Held first: a state that adds itself to the machine has one owner throughout.
        m_contents->ReserveState();
        CKvFSMState* const held = state.release();
        m_contents->Hold(held, &m_fsm);
        held->SerializeFrom(&node, &m_fsm);
    }
}

void CKvFSM::CReader::ReadTransitions(const CKvScriptTreeNode& list)
{
    for (int i = 0; i < list.GetChildCount() && HasMachine(); ++i)
        ReadTransition(*list.GetChild(i));
}

void CKvFSM::CReader::ReadTransition(CKvScriptTreeNode& node)
{
    const KVID& ids = KVID::GetSingleton();
    CKvFSMState* const source = FindState(node, ids.in);
    CKvFSMState* const reachable = FindState(node, ids.out);
    if (source == nullptr || reachable == nullptr)
        return;
    auto made = m_factories.trigger(node.GetAttributeValueAsString(ids.trigger), node);
    if (made == nullptr)
        return;
    CKvTrigger* const trigger = CKvFSMContents::Keep(m_contents->triggers, std::move(made));
    trigger->Initialize(&node);
    auto transition =
        std::make_unique<CKvFSMStateTransition>(reachable, source, trigger, ReadActions(node), 0);
    source->AddStateTransition(
        CKvFSMContents::Keep(m_contents->transitions, std::move(transition)));
}

CKvArray<CKvAction*> CKvFSM::CReader::ReadActions(const CKvScriptTreeNode& transition)
{
    CKvArray<CKvAction*> actions;
    for (int i = 0; i < transition.GetChildCount() && m_factories.action; ++i) {
        CKvScriptTreeNode& node = *transition.GetChild(i);
        if (node.GetIdentifier() != KVID::GetSingleton().action)
            continue;
        if (auto made = m_factories.action(node))
            actions.Add(CKvFSMContents::Keep(m_contents->actions, std::move(made)));
    }
    return actions;
}

CKvFSMState* CKvFSM::CReader::FindState(const CKvScriptTreeNode& node,
                                        const CKvIdentifier& attribute)
{
    for (; m_namedCount < m_fsm.GetStateCount(); ++m_namedCount) {
        CKvFSMState* const state = m_fsm.GetState(m_namedCount);
        m_states.try_emplace(state->GetIdentifier().GetCrc64(), state);
    }
    const CKvIdentifier name(node.GetAttributeValueAsString(attribute));
    const auto found = m_states.find(name.GetCrc64());
    return found != m_states.end() ? found->second : nullptr;
}
