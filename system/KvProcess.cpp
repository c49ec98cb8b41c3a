#include "system/KvProcess.h"

#include "core/KvOutOfMemory.h"

bool CKvProcess::Start()
{
    if (m_handle != kKvNoProcess)
        return false;
    if (!KvFalseWhenOutOfMemory(
            [this] { return KvPlatformStartProcess(m_command.GetText(), m_handle); }))
        return false;
    m_status = EStatus::Running;
    m_exitCode = -1;
    return true;
}

void CKvProcess::Kill()
{
    // Somebody else may have seen its end, and its id may by now be that of another process.
    if (Ask(false) != EStatus::Running)
        return;
    KvPlatformKillProcess(m_handle);
    Ask(true);
}

CKvProcess::EStatus CKvProcess::Ask(bool wait)
{
    if (m_handle == kKvNoProcess)
        return m_status;
    m_status = KvPlatformAskProcess(m_handle, wait, m_exitCode);
    if (m_status != EStatus::Running)
        m_handle = kKvNoProcess;
    return m_status;
}
