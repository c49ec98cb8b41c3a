// A list of machines, for whoever updates or inspects them together.

#pragma once

#include "core/KvArray.h"

class CKvFSM;

/// Ownership: the machines stay their makers', who remove them before they destroy them.
class CKvFSMManager
{
public:
    CKvFSMManager() = default;
    CKvFSMManager(const CKvFSMManager&) = delete;
    CKvFSMManager& operator=(const CKvFSMManager&) = delete;

    /// Appends. Null, and a machine that is in the list already, is not appended.
    void AddFSM(CKvFSM* fsm);

    /// Takes a machine out, the later ones move down by one place; nothing when it is not there.
    void RemoveFSM(CKvFSM* fsm);

    int GetFSMCount() const { return m_machines.GetCount(); }

    /// The index must be in range: debug builds assert it, release builds give null for another.
    CKvFSM* GetFSM(int index) const;

private:
    /// The count when it is not there.
    int FindFSM(const CKvFSM* fsm) const;

    CKvArray<CKvFSM*> m_machines;
};
