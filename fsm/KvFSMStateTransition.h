// The way from one state to another: fires when its trigger says so, runs its actions and changes
// the state of the machine.

#pragma once

#include "core/KvArray.h"

class CKvAction;
class CKvFSMState;
class CKvTrigger;

/// Fields stand in the documented order; the destructor is the only virtual function.
///
/// Ownership: none of what it points to. Trigger, actions and states must live as long as the
///            transition is used. A copy points to the same.
class CKvFSMStateTransition
{
public:
    /// \a source is the state that the transition starts from: its machine will change state. A
    /// transition without trigger never fires; null actions are skipped; without a source, or with
    /// a reachable state that the machine does not list, only the actions happen.
    CKvFSMStateTransition(CKvFSMState* reachable, CKvFSMState* source, CKvTrigger* trigger,
                          const CKvArray<CKvAction*>& actions, int priority);
    CKvFSMStateTransition(const CKvFSMStateTransition&) = default;
    CKvFSMStateTransition& operator=(const CKvFSMStateTransition&) = default;
    virtual ~CKvFSMStateTransition();

    void Initialize() {}
    void Release() {}

    /// Asks the trigger. When it is triggered, all actions run in order, then the machine that owns
    /// the source state at that moment, if any, changes to the reachable state: last, so that it
    /// wins over a change that an action made. True when the transition fired.
    bool CheckTrigger();

    CKvFSMState* GetReachableState() const { return m_reachable; }
    void SetReachableState(CKvFSMState* state) { m_reachable = state; }

    CKvTrigger* GetTrigger() const { return m_trigger; }
    void SetTrigger(CKvTrigger* trigger) { m_trigger = trigger; }

    /// The index must be in range: debug builds assert it, release builds give null for another.
    CKvAction* GetAction(int index) const;
    int GetActionCount() const { return m_actions.GetCount(); }

    /// Only CKvFSMState::SortTransition() and GetMaxPriority() look at it.
    int GetPriority() const { return m_priority; }
    void SetPriority(int priority) { m_priority = priority; }

private:
    CKvFSMState* m_reachable;
    CKvFSMState* m_source;
    CKvTrigger* m_trigger;
    CKvArray<CKvAction*> m_actions;
    int m_priority;
};
