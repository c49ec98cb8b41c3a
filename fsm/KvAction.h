// What happens when a transition fires. Game code derives from it.

#pragma once

/// Virtual functions stand in the documented slot order.
class CKvAction
{
public:
    CKvAction() = default;
    CKvAction(const CKvAction&) = default;
    CKvAction& operator=(const CKvAction&) = default;
    virtual ~CKvAction();

    /// Runs while the machine is still in the old state. It may change the state, load into the
    /// machine, release or destroy it: what a machine holds lives on until the call of the machine
    /// or state that led here has returned. What the program owns it must not delete from here.
    virtual void Execute() = 0;
};

/// For derived classes to call; does nothing.
inline void CKvAction::Execute() {}
