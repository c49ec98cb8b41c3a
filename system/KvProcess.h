// Another program, run beside this one: started from a command text, watched and waited for.

#pragma once

#include <cstdint>

#include "core/KvString.h"
#include "platform/KvPlatformProcess.h"

/// One run of a command. platform/KvPlatformProcess.h says how the text is split into words and
/// what a program inherits; no shell is involved.
class CKvProcess
{
public:
    using EStatus = EKvProcessStatus;

    explicit CKvProcess(const TKvString<char>& command) : m_command(command) {}
    CKvProcess(const CKvProcess&) = delete;
    CKvProcess& operator=(const CKvProcess&) = delete;

    /// Kills the process if it still runs: nothing goes on once its owner is gone.
    ~CKvProcess() { Kill(); }

    /// Starts the command, again if it has ended before.
    ///
    /// Errors: false while it runs, and when the program cannot be started; the status is then as
    ///         it was.
    [[nodiscard]] bool Start();

    /// Looks how the process is, without waiting, and gives the status.
    EStatus Poll() { return Ask(false); }

    /// Returns the status when the process has ended; at once when it was not started.
    EStatus Wait() { return Ask(true); }

    /// Ends the process, if it runs, without asking it, and returns when it is gone. Processes that
    /// it has started itself go on.
    void Kill();

    /// As of the last Start(), Poll(), Wait() or Kill().
    [[nodiscard]] EStatus GetStatus() const { return m_status; }

    /// The exit code when the status is Exited, the number of the signal when it is Killed,
    /// otherwise -1.
    [[nodiscard]] int GetExitCode() const { return m_exitCode; }

    [[nodiscard]] const TKvString<char>& GetCommand() const { return m_command; }

    /// What the system calls the process (on POSIX hosts its id) while its end has not been seen,
    /// otherwise kKvNoProcess. For waiting on it together with other things, not for taking its end
    /// away from this object.
    [[nodiscard]] std::intptr_t GetWaitHandle() const { return m_handle; }

private:
    EStatus Ask(bool wait);

    // In the documented order.
    TKvString<char> m_command;
    std::intptr_t m_handle = kKvNoProcess;
    EStatus m_status = EStatus::NotStarted;

    int m_exitCode = -1;
};
