#include "bench/KvProcessMeter.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace {

constexpr double kBytesPerKibibyte = 1024;
constexpr double kSecondsPerMicrosecond = 1e-6;

double Seconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) +
           static_cast<double>(time.tv_usec) * kSecondsPerMicrosecond;
}

void Report(const std::vector<std::string>& command, const char* reason, int number)
{
    std::fprintf(stderr, "bench:");
    for (const std::string& word : command)
        std::fprintf(stderr, " '%s'", word.c_str());
    std::fprintf(stderr, " %s %d\n", reason, number);
}

/// Gives 0, or the errno of the failure.
int Start(const std::vector<std::string>& command, pid_t& child)
{
    std::vector<std::string> words = command;
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    int error = posix_spawn_file_actions_init(&actions);
    if (error != 0)
        return error;
    error = posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    if (error == 0)
        error = posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return error;
}

}  // namespace

bool KvMeasureProcess(const std::vector<std::string>& command, CKvProcessCost& cost)
{
    pid_t child = 0;
    if (const int error = Start(command, child); error != 0) {
        Report(command, "did not start: error", error);
        return false;
    }
    int status = 0;
    rusage usage = {};
    pid_t ended = 0;
    do
        ended = wait4(child, &status, 0, &usage);
    while (ended < 0 && errno == EINTR);

    if (ended != child) {
        Report(command, "was lost: error", errno);
        return false;
    }
    if (WIFSIGNALED(status)) {
        Report(command, "was ended by signal", WTERMSIG(status));
        return false;
    }
    if (WEXITSTATUS(status) != 0) {
        Report(command, "ended with status", WEXITSTATUS(status));
        return false;
    }
    cost.userSeconds = Seconds(usage.ru_utime);
    cost.systemSeconds = Seconds(usage.ru_stime);
    cost.peakBytes = static_cast<double>(usage.ru_maxrss) * kBytesPerKibibyte;
    cost.touchedBytes =
        static_cast<double>(usage.ru_minflt) * static_cast<double>(sysconf(_SC_PAGESIZE));
    return true;
}

std::string KvOwnProgramPath()
{
    std::error_code error;
    const std::filesystem::path path = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::string() : path.string();
}
