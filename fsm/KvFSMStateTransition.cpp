#include "fsm/KvFSMStateTransition.h"

#include "core/KvEntryAt.h"
#include "fsm/KvFSM.h"
#include "fsm/KvFSMContents.h"

CKvFSMStateTransition::CKvFSMStateTransition(CKvFSMState* reachable, CKvFSMState* source,
                                             CKvTrigger* trigger,
                                             const CKvArray<CKvAction*>& actions, int priority)
    : m_reachable(reachable),
      m_source(source),
      m_trigger(trigger),
      m_actions(actions),
      m_priority(priority)
{
}

CKvFSMStateTransition::~CKvFSMStateTransition() = default;

bool CKvFSMStateTransition::CheckTrigger()
{
    const std::shared_ptr<CKvFSMContents> contents = CKvFSMContents::Of(m_source);
    if (m_trigger == nullptr || !m_trigger->IsTriggered())
        return false;
    for (CKvAction* action : m_actions) {
        if (action != nullptr)
            action->Execute();
    }
    CKvFSM* const fsm = m_source != nullptr ? m_source->GetFSM() : nullptr;
    if (fsm != nullptr)
        fsm->ChangeState(m_reachable);
    return true;
}

CKvAction* CKvFSMStateTransition::GetAction(int index) const
{
    return KvEntryAt(m_actions, index);
}
