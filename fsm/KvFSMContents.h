// What machines that are copies of each other hold together: their states, and the transitions,
// triggers and actions that the loader made. One lifetime for all of it, because its pointers may
// lead from anything to anything. Internal to this folder.

#pragma once

#include <memory>
#include <vector>

#include "fsm/KvAction.h"
#include "fsm/KvFSMState.h"
#include "fsm/KvFSMStateTransition.h"
#include "fsm/KvTrigger.h"

class CKvFSM;

/// Each machine that shares the contents has a std::shared_ptr to it; a function that calls game
/// code takes another for the time of the call, so that nothing is deleted under its feet.
///
/// The machine that a held state names is always one that shares the contents, or null.
class CKvFSMContents : public std::enable_shared_from_this<CKvFSMContents>
{
public:
    /// The contents that hold a state, kept alive; null for null and for a state of the program.
    static std::shared_ptr<CKvFSMContents> Of(const CKvFSMState* state);

    void Join(CKvFSM* machine) { m_machines.push_back(machine); }

    /// The states of that machine pass to the oldest of the others that lists them.
    void Leave(CKvFSM* machine);

    /// \a successor joins and takes the place of \a machine, and its states.
    void Replace(CKvFSM* machine, CKvFSM* successor) noexcept;

    [[nodiscard]] bool IsSharedBy(const CKvFSM* machine) const;

    /// False for a state that other contents hold.
    [[nodiscard]] bool MayHold(const CKvFSMState& state) const;

    /// Makes room for one more state, so that the next Hold() cannot fail.
    void ReserveState();

    /// Takes a state that nobody holds yet and gives it to \a machine, as well as one without.
    void Hold(CKvFSMState* state, CKvFSM* machine) noexcept;

    template <typename T>
    static T* Keep(std::vector<std::unique_ptr<T>>& list, std::unique_ptr<T> made)
    {
        list.push_back(std::move(made));
        return list.back().get();
    }

    // Made by the loader. The states below go before these, so that they may use them to the last.
    std::vector<std::unique_ptr<CKvAction>> actions;
    std::vector<std::unique_ptr<CKvTrigger>> triggers;
    std::vector<std::unique_ptr<CKvFSMStateTransition>> transitions;

private:
    std::vector<CKvFSM*> m_machines;  // oldest first
    std::vector<std::unique_ptr<CKvFSMState>> m_states;
};
