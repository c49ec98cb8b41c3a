#include "fsm/KvFSMManager.h"

#include <algorithm>

#include "core/KvEntryAt.h"

void CKvFSMManager::AddFSM(CKvFSM* fsm)
{
    if (fsm != nullptr && FindFSM(fsm) == m_machines.GetCount())
        m_machines.Add(fsm);
}

void CKvFSMManager::RemoveFSM(CKvFSM* fsm)
{
    const int index = FindFSM(fsm);
    if (index < m_machines.GetCount())
        m_machines.RemoveAt(index);
}

CKvFSM* CKvFSMManager::GetFSM(int index) const
{
    return KvEntryAt(m_machines, index);
}

int CKvFSMManager::FindFSM(const CKvFSM* fsm) const
{
    return static_cast<int>(std::find(m_machines.begin(), m_machines.end(), fsm) -
                            m_machines.begin());
}
