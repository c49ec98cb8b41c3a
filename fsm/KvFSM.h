// A finite-state machine for game objects: named states, one of them current, driven by Update()
// once a frame. It can be filled by the program or from a document (docs/formats/state-machine.md).
//
// A machine and its copies hold their states, and what the loader made for them, together: it lives
// until the last of them lets go (Release(), destructor, assignment), what one adds after the copy
// included. (A copy of a machine that holds nothing yet, or was released, shares nothing with it.)
// Each has its own list, current and default state. But a state belongs to one machine, the one it
// was added to, and that one changes state when the state's transitions fire, whichever copy is
// updated; once it lets go, the oldest copy that lists the state takes its place. A machine that is
// moved takes everything with it, so that it can be returned by value or kept in a vector.

#pragma once

#include <memory>

#include "core/KvArray.h"
#include "core/KvString.h"
#include "fsm/KvFSMFactories.h"

class CKvFSMContents;
class CKvFSMState;
class CKvIdentifier;
class CKvScriptTree;

/// Fields stand in the documented order; the destructor is the only virtual function.
class CKvFSM
{
public:
    /// A machine without states.
    CKvFSM();

    /// Shares the states; see above.
    CKvFSM(const CKvFSM& other);
    CKvFSM& operator=(const CKvFSM& other);

    /// Leaves \a other without states and factories.
    CKvFSM(CKvFSM&& other) noexcept;
    CKvFSM& operator=(CKvFSM&& other) noexcept;

    /// Deletes the states, unless a copy still holds them.
    virtual ~CKvFSM();

    /// Loads the XML document at a path.
    ///
    /// Errors: false when the file cannot be read as XML, and as LoadFromStream().
    [[nodiscard]] bool Initialize(const TKvString<char>& path);

    /// Adds the states and, with a trigger factory, the transitions of a document to those that are
    /// there, then changes to the default state if that is one of the machine's. All names mean
    /// what FindState() finds; a default state or a transition with an unknown name is ignored. The
    /// rest of the document is passed over when something that is called on the way releases,
    /// destroys or moves the machine.
    ///
    /// Errors: false for a document whose root is not "fsm", and when memory is short, for game
    ///         code too: what had been done until then stays.
    [[nodiscard]] bool LoadFromStream(CKvScriptTree& tree);

    /// Writing is not supported: false.
    bool Save();

    /// For the loads to come.
    void SetFactories(const CKvFSMFactories& factories) { m_factories = factories; }

    /// Deletes the states and what the loader made, unless a copy still holds them; there is no
    /// default and no current state then. No hook runs.
    void Release();

    /// Makes a state, appends it and gives it.
    CKvFSMState* CreateState(const TKvString<char>& name);

    /// Appends. Null, and a state that is held by a machine which is no copy, is not appended.
    ///
    /// Ownership: the machine takes the state and becomes its owner.
    void AddState(CKvFSMState* state);

    /// The index must be in range: debug builds assert it, release builds give null for another.
    CKvFSMState* GetState(int index) const;
    int GetStateCount() const { return m_states.GetCount(); }

    /// The first state of that name, or null.
    CKvFSMState* FindState(const CKvIdentifier& identifier) const;

    /// The setters run no hooks and do not look whether the state is one of the machine's; another
    /// one must live while it is set.
    void SetDefaultState(CKvFSMState* state) { m_defaultState = state; }
    CKvFSMState* GetDefaultState() const { return m_defaultState; }
    void SetCurrentState(CKvFSMState* state) { m_currentState = state; }
    CKvFSMState* GetCurrentState() const { return m_currentState; }

    /// Leaves the current state and enters the given one, be it the same. A state that is not in
    /// the list is ignored.
    void ChangeState(CKvFSMState* state);

    /// One frame of the current state, if there is one. Its base class fires at most one
    /// transition.
    void Update(float dt);

private:
    friend class CKvFSMContents;
    class CReader;

    bool Lists(const CKvFSMState* state) const;
    CKvFSMContents& GetContents();
    void TakeFrom(CKvFSM& other) noexcept;

    CKvFSMState* m_defaultState = nullptr;
    CKvFSMState* m_currentState = nullptr;
    CKvArray<CKvFSMState*> m_states;

    /// Shared with the copies; null until there is something to hold.
    std::shared_ptr<CKvFSMContents> m_contents;

    /// OnLeave() of the current state is running, or has run for the change that is under way.
    bool m_isLeaving = false;

    CKvFSMFactories m_factories;
};
