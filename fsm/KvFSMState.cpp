#include "fsm/KvFSMState.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "core/KvEntryAt.h"
#include "core/KvId.h"
#include "fsm/KvFSM.h"
#include "fsm/KvFSMContents.h"
#include "scripttree/KvScriptTreeNode.h"

namespace {

/// Wider than a priority, so that null comes behind all of them.
std::int64_t GetRank(const CKvFSMStateTransition* transition)
{
    return transition != nullptr ? transition->GetPriority()
                                 : std::numeric_limits<std::int64_t>::min();
}

}  // namespace

CKvFSMState::CKvFSMState(const CKvFSMState& other)
    : m_identifier(other.m_identifier), m_transitions(other.m_transitions), m_fsm(other.m_fsm)
{
}

CKvFSMState& CKvFSMState::operator=(const CKvFSMState& other)
{
    if (this == &other)
        return *this;
    m_transitions = other.m_transitions;
    m_identifier = other.m_identifier;
    if (m_contents == nullptr)
        m_fsm = other.m_fsm;
    return *this;
}

CKvFSMState::~CKvFSMState() = default;

void CKvFSMState::OnEnter() {}

void CKvFSMState::OnUpdate(float /*dt*/)
{
    const std::shared_ptr<CKvFSMContents> contents = CKvFSMContents::Of(this);
    for (int i = 0; i < m_transitions.GetCount(); ++i) {
        if (m_transitions[i] != nullptr && m_transitions[i]->CheckTrigger())
            return;
    }
}

void CKvFSMState::OnLeave() {}

void CKvFSMState::SetParameters(CKvScriptTreeNode* /*node*/) {}

bool CKvFSMState::SerializeFrom(CKvScriptTreeNode* node, CKvFSM* fsm)
{
    if (node == nullptr || fsm == nullptr)
        return false;
    m_identifier.Set(node->GetAttributeValueAsString(KVID::GetSingleton().name));
    fsm->AddState(this);
    return true;
}

CKvFSMStateTransition* CKvFSMState::GetStateTransition(int index) const
{
    return KvEntryAt(m_transitions, index);
}

CKvFSMStateTransition* CKvFSMState::GetMaxPriority(
    CKvArray<CKvFSMStateTransition*> transitions) const
{
    const auto greatest = std::max_element(
        transitions.begin(), transitions.end(),
        [](const auto* first, const auto* second) { return GetRank(first) < GetRank(second); });
    return greatest != transitions.end() && GetRank(*greatest) >= 0 ? *greatest : nullptr;
}

void CKvFSMState::SortTransition()
{
    std::stable_sort(
        m_transitions.begin(), m_transitions.end(),
        [](const auto* first, const auto* second) { return GetRank(first) > GetRank(second); });
}
