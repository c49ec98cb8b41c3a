// One state of a machine, with the transitions that lead out of it. Game code derives from it.

#pragma once

#include "core/KvArray.h"
#include "core/KvIdentifier.h"

class CKvFSM;
class CKvFSMContents;
class CKvFSMStateTransition;
class CKvScriptTreeNode;

/// Virtual functions and fields stand in the documented order.
///
/// Ownership: a state that was added to a machine is that machine's (and its copies'), another one
///            the program's. It never deletes its transitions.
class CKvFSMState
{
public:
    /// The state is not in the list of \a fsm before CKvFSM::AddState(). A state that the program
    /// keeps must not outlive the machine it names.
    CKvFSMState(const CKvIdentifier& identifier, CKvFSM* fsm) : m_identifier(identifier), m_fsm(fsm)
    {
    }

    /// The copy names the same machine and transitions (whose source is still \a other), but is in
    /// no machine's list: it is the program's.
    CKvFSMState(const CKvFSMState& other);

    /// Copies name, transitions and machine; a state that is in a machine stays with that machine.
    CKvFSMState& operator=(const CKvFSMState& other);

    virtual ~CKvFSMState();

    // --- Hooks. They may do with the machine what an action may (CKvAction::Execute()).

    /// The state has become the current one. Does nothing here.
    virtual void OnEnter();

    /// One frame in this state, \a dt in seconds or whatever the program counts in. Here: asks the
    /// transitions in list order, skipping null, up to the first that fires.
    virtual void OnUpdate(float dt);

    /// The state is about to be left. A change of state from here is carried out at once, without
    /// another OnLeave(), and replaces the change that was under way. Does nothing here.
    virtual void OnLeave();

    /// For game code; does nothing here, and nothing here calls it.
    virtual void SetParameters(CKvScriptTreeNode* node);

    /// Takes its name from the "name" of \a node and adds itself to the machine. "settings" and
    /// "editor_properties" below the node are for derived classes, which call this one too.
    ///
    /// Errors: false without a node or machine; nothing happened.
    virtual bool SerializeFrom(CKvScriptTreeNode* node, CKvFSM* fsm);

    void Initialize() {}
    void Release() {}

    const CKvIdentifier& GetIdentifier() const { return m_identifier; }
    void SetIdentifier(const CKvIdentifier& identifier) { m_identifier = identifier; }

    /// The machine that changes state when a transition of this state fires: the one that the state
    /// was added to or, when that was released or destroyed, the oldest of its copies that lists
    /// the state; null when there is none.
    CKvFSM* GetFSM() const { return m_fsm; }

    /// Appends, whatever the priority. Ownership: stays with the caller.
    void AddStateTransition(CKvFSMStateTransition* transition) { m_transitions.Add(transition); }

    int GetStateTransitionCount() const { return m_transitions.GetCount(); }

    /// The index must be in range: debug builds assert it, release builds give null for another.
    CKvFSMStateTransition* GetStateTransition(int index) const;

    /// The first transition of greatest priority, among those of priority 0 and above; null when
    /// there is none.
    CKvFSMStateTransition* GetMaxPriority(CKvArray<CKvFSMStateTransition*> transitions) const;

    /// Orders the transitions by descending priority, negative ones last and null behind them;
    /// equal ones keep their order.
    ///
    /// Cost: n log n.
    void SortTransition();

private:
    friend class CKvFSMContents;

    CKvIdentifier m_identifier;
    CKvArray<CKvFSMStateTransition*> m_transitions;
    CKvFSM* m_fsm;

    /// What holds this state; null for a state of the program.
    CKvFSMContents* m_contents = nullptr;
};
