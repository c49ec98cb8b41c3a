#include "fsm/KvFSMContents.h"

#include <algorithm>

#include "fsm/KvFSM.h"

std::shared_ptr<CKvFSMContents> CKvFSMContents::Of(const CKvFSMState* state)
{
    if (state == nullptr || state->m_contents == nullptr)
        return nullptr;
    return state->m_contents->weak_from_this().lock();
}

void CKvFSMContents::Leave(CKvFSM* machine)
{
    m_machines.erase(std::find(m_machines.begin(), m_machines.end(), machine));
    for (CKvFSM* heir : m_machines) {
        for (CKvFSMState* state : heir->m_states) {
            if (state->m_fsm == machine)
                state->m_fsm = heir;
        }
    }
    for (const auto& state : m_states) {
        if (state->m_fsm == machine)
            state->m_fsm = nullptr;
    }
}

void CKvFSMContents::Replace(CKvFSM* machine, CKvFSM* successor) noexcept
{
    std::replace(m_machines.begin(), m_machines.end(), machine, successor);
    for (const auto& state : m_states) {
        if (state->m_fsm == machine)
            state->m_fsm = successor;
    }
}

bool CKvFSMContents::IsSharedBy(const CKvFSM* machine) const
{
    return std::find(m_machines.begin(), m_machines.end(), machine) != m_machines.end();
}

bool CKvFSMContents::MayHold(const CKvFSMState& state) const
{
    return state.m_contents == nullptr || state.m_contents == this;
}

void CKvFSMContents::ReserveState()
{
    if (m_states.size() == m_states.capacity())
        m_states.reserve(2 * m_states.size() + 8);
}

void CKvFSMContents::Hold(CKvFSMState* state, CKvFSM* machine) noexcept
{
    const bool isNew = state->m_contents == nullptr;
    if (isNew) {
        m_states.emplace_back(state);
        state->m_contents = this;
    }
    if (isNew || state->m_fsm == nullptr)
        state->m_fsm = machine;
}
