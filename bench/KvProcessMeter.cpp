#include "bench/KvProcessMeter.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>
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
int Start(const CKvProcess& process, pid_t& child)
{
    std::vector<std::string> words = process.command;
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    int error = posix_spawn_file_actions_init(&actions);
    if (error != 0)
        return error;
    error = posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, process.input.c_str(),
                                             O_RDONLY, 0);
    if (error == 0)
        error = posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, process.output.c_str(),
                                                 O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (error == 0)
        error = posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return error;
}

}  // namespace

bool KvRunProcess(const CKvProcess& process, CKvProcessEnd& end)
{
    pid_t child = 0;
    if (const int error = Start(process, child); error != 0) {
        Report(process.command, "did not start: error", error);
        return false;
    }
    int status = 0;
    rusage usage = {};
    pid_t ended = 0;
    do
        ended = wait4(child, &status, 0, &usage);
    while (ended < 0 && errno == EINTR);

    if (ended != child) {
        Report(process.command, "was lost: error", errno);
        return false;
    }
    end.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    end.status = WIFSIGNALED(status) ? 0 : WEXITSTATUS(status);
    end.cost.userSeconds = Seconds(usage.ru_utime);
    end.cost.systemSeconds = Seconds(usage.ru_stime);
    end.cost.peakBytes = static_cast<double>(usage.ru_maxrss) * kBytesPerKibibyte;
    end.cost.touchedBytes =
        static_cast<double>(usage.ru_minflt) * static_cast<double>(sysconf(_SC_PAGESIZE));
    return true;
}

bool KvMeasureProcess(const CKvProcess& process, CKvProcessCost& cost)
{
    CKvProcessEnd end;
    if (!KvRunProcess(process, end))
        return false;
    if (end.signal != 0)
        Report(process.command, "was ended by signal", end.signal);
    else if (end.status != 0)
        Report(process.command, "ended with status", end.status);
    cost = end.cost;
    return end.signal == 0 && end.status == 0;
}

std::string KvOwnProgramPath()
{
    std::error_code error;
    const std::filesystem::path path = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::string() : path.string();
}

std::string KvFindProgram(const std::string& name)
{
    const char* path = std::getenv("PATH");
    std::istringstream folders(path == nullptr ? "" : path);
    for (std::string program; std::getline(folders, program, ':');) {
        program.append("/").append(name);
        if (access(program.c_str(), X_OK) == 0)
            return program;
    }
    return {};
}
