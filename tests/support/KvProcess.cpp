#include "tests/support/KvProcess.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "tests/support/KvTemporaryFolder.h"

namespace {

/// A word that the shell takes as it stands.
std::string Quote(const std::string& word)
{
    std::string quoted = " '";
    for (const char c : word)
        quoted += c == '\'' ? "'\\''" : std::string(1, c);
    return quoted + '\'';
}

}  // namespace

CKvProcessResult KvRunProcess(const std::string& program, const std::vector<std::string>& arguments,
                              const std::string& folder, const CKvProcessOptions& options)
{
    const CKvTemporaryFolder outputs;
    std::string command = "cd" + Quote(folder) + " && ";
    std::string output = " >" + Quote(outputs.Path("out"));
    if (options.outputReaderIsGone) {
        // Opened for both, so that opening it for writing does not wait; then for writing alone.
        const std::string pipe = Quote(outputs.Path("pipe"));
        command += "mkfifo" + pipe + " && exec 3<>" + pipe + " && exec >" + pipe + " 3>&- && ";
        output.clear();
    }
    if (options.memoryLimitKiB > 0)
        command.append("ulimit -v ").append(std::to_string(options.memoryLimitKiB)).append(" && ");
    command += "exec env";
    for (const std::string& variable : options.environment)
        command += Quote(variable);
    if (options.asOrdinaryUser && geteuid() == 0)
        command += " setpriv --reuid=65534";
    command += Quote(program);
    for (const std::string& argument : arguments)
        command += Quote(argument);
    command += output + " 2>" + Quote(outputs.Path("err"));

    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, outputs.Read("out"), outputs.Read("err")};
}
