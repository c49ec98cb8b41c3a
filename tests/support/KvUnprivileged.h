// Work done without root's rights, for tests of what a user may not do. Also for tests that write
// to devices: as root, a writer that is broken would replace the device itself.

#pragma once

#include <sys/wait.h>
#include <unistd.h>

/// Runs \a action in a child process, as an ordinary user if the test runs as root, and gives what
/// it returns, 0 to 254; 255 when it could not be run.
template <class TAction>
int KvRunUnprivileged(TAction action)
{
    constexpr unsigned int kNobody = 65534;
    constexpr int kNotRun = 255;
    const pid_t child = fork();
    if (child == 0) {
        const bool dropped = geteuid() != 0 || (setgid(kNobody) == 0 && setuid(kNobody) == 0);
        _exit(dropped ? action() : kNotRun);
    }
    int status = 0;
    const bool ended = child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status);
    return ended ? WEXITSTATUS(status) : kNotRun;
}
