#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <exception>
#include <string>
#include <thread>
#include <vector>

#include "platform/KvCommandWordsPosix.h"
#include "platform/KvHostPathPosix.h"
#include "platform/KvPlatformProcess.h"

namespace {

/// How a program is started: with no files but the standard streams, and with the signals that
/// programs rely on as they are at a fresh start, whatever the host has set up for itself.
class CStart
{
public:
    CStart()
    {
        posix_spawnattr_init(&m_attributes);
        posix_spawn_file_actions_init(&m_actions);
        sigset_t none;
        sigemptyset(&none);
        posix_spawnattr_setsigmask(&m_attributes, &none);
        sigset_t ignoredByHosts = none;
        sigaddset(&ignoredByHosts, SIGPIPE);
        sigaddset(&ignoredByHosts, SIGCHLD);
        posix_spawnattr_setsigdefault(&m_attributes, &ignoredByHosts);
    }

    CStart(const CStart&) = delete;
    CStart& operator=(const CStart&) = delete;

    ~CStart()
    {
        posix_spawn_file_actions_destroy(&m_actions);
        posix_spawnattr_destroy(&m_attributes);
    }

    /// Keeps the program apart from the terminal and the standard streams.
    void Detach()
    {
        m_flags |= POSIX_SPAWN_SETSID;
        Check(posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDWR, 0));
        Check(posix_spawn_file_actions_adddup2(&m_actions, STDIN_FILENO, STDOUT_FILENO));
        Check(posix_spawn_file_actions_adddup2(&m_actions, STDIN_FILENO, STDERR_FILENO));
    }

    /// Gives false when the program cannot be started.
    bool Run(std::vector<std::string>& words, pid_t& process)
    {
        posix_spawnattr_setflags(&m_attributes, static_cast<short>(m_flags));
        Check(posix_spawn_file_actions_addclosefrom_np(&m_actions, STDERR_FILENO + 1));
        std::vector<char*> pointers;
        pointers.reserve(words.size() + 1);
        for (std::string& word : words)
            pointers.push_back(word.data());
        pointers.push_back(nullptr);
        return m_isReady && posix_spawnp(&process, pointers[0], &m_actions, &m_attributes,
                                         pointers.data(), environ) == 0;
    }

private:
    void Check(int error) { m_isReady = m_isReady && error == 0; }

    posix_spawnattr_t m_attributes;
    posix_spawn_file_actions_t m_actions;
    int m_flags = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
    bool m_isReady = true;
};

pid_t WaitFor(pid_t process, int& status, int options)
{
    for (;;) {
        const pid_t found = waitpid(process, &status, options);
        if (found >= 0 || errno != EINTR)
            return found;
    }
}

}  // namespace

bool KvPlatformStartProcess(const char* command, std::intptr_t& process)
{
    std::vector<std::string> words = KvSplitCommand(command);
    if (words.empty())
        return false;
    words[0] = KvToHostPath(words[0].c_str());
    pid_t started = 0;
    if (!CStart().Run(words, started))
        return false;
    process = started;
    return true;
}

EKvProcessStatus KvPlatformAskProcess(std::intptr_t process, bool wait, int& code)
{
    int status = 0;
    const pid_t ended = WaitFor(static_cast<pid_t>(process), status, wait ? 0 : WNOHANG);
    if (ended == 0)
        return EKvProcessStatus::Running;
    if (ended < 0)
        return EKvProcessStatus::Lost;
    if (WIFEXITED(status)) {
        code = WEXITSTATUS(status);
        return EKvProcessStatus::Exited;
    }
    code = WTERMSIG(status);
    return EKvProcessStatus::Killed;
}

void KvPlatformKillProcess(std::intptr_t process)
{
    kill(static_cast<pid_t>(process), SIGKILL);
}

void KvPlatformOpenUrl(const char* url)
{
    if (*url == '\0' || *url == '-')
        return;
    CStart start;
    start.Detach();
    std::vector<std::string> words = {"xdg-open", url};
    pid_t opener = 0;
    if (!start.Run(words, opener))
        return;
    // Somebody has to see the opener's end, or it stays in the system's table as long as we do.
    try {
        std::thread([opener] {
            int status = 0;
            WaitFor(opener, status, 0);
        }).detach();
    } catch (const std::exception&) {
        return;  // no thread or no memory is left: then it stays
    }
}
