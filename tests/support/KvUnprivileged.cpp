#include "tests/support/KvUnprivileged.h"

#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr unsigned int kNobody = 65534;
constexpr int kNotRun = 255;

}  // namespace

int KvRunUnprivileged(const std::function<int()>& action)
{
    const pid_t child = fork();
    if (child == 0) {
        const bool dropped = geteuid() != 0 || (setgid(kNobody) == 0 && setuid(kNobody) == 0);
        _exit(dropped ? action() : kNotRun);
    }
    int status = 0;
    const bool ended = child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status);
    return ended ? WEXITSTATUS(status) : kNotRun;
}
