#include "tests/support/KvProcess.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

constexpr uid_t kNobody = 65534;

using CStream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

std::string ReadFromStart(std::FILE* stream)
{
    std::rewind(stream);
    std::string text;
    std::array<char, 4096> piece = {};
    for (std::size_t read = 0; (read = std::fread(piece.data(), 1, piece.size(), stream)) > 0;)
        text.append(piece.data(), read);
    return text;
}

/// A descriptor that nobody reads from: every write to it fails.
int OpenBrokenPipe()
{
    std::array<int, 2> ends = {};
    if (pipe(ends.data()) != 0)
        return -1;
    close(ends[0]);
    return ends[1];
}

/// Becomes the program. Only the child gets here, and never back.
[[noreturn]] void Execute(const std::string& program, const std::vector<std::string>& arguments,
                          const std::string& folder, const CKvProcessOptions& options, int output,
                          int error)
{
    std::vector<char*> words = {const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments)
        words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    for (const std::string& variable : options.environment)
        putenv(const_cast<char*>(variable.c_str()));
    std::signal(SIGPIPE, SIG_DFL);
    const bool ready = dup2(output, STDOUT_FILENO) >= 0 && dup2(error, STDERR_FILENO) >= 0 &&
                       chdir(folder.c_str()) == 0 &&
                       (!options.asOrdinaryUser || geteuid() != 0 || setuid(kNobody) == 0);
    if (ready)
        execv(program.c_str(), words.data());
    _exit(127);
}

}  // namespace

CKvProcessResult KvRunProcess(const std::string& program, const std::vector<std::string>& arguments,
                              const std::string& folder, const CKvProcessOptions& options)
{
    const CStream output(std::tmpfile(), &std::fclose);
    const CStream error(std::tmpfile(), &std::fclose);
    const int outputTarget = options.outputReaderIsGone ? OpenBrokenPipe() : fileno(output.get());
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0)
        Execute(program, arguments, folder, options, outputTarget, fileno(error.get()));
    if (options.outputReaderIsGone)
        close(outputTarget);

    CKvProcessResult result;
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.standardOutput = ReadFromStart(output.get());
    result.standardError = ReadFromStart(error.get());
    return result;
}
