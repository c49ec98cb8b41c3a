#include "tests/support/KvFullDevice.h"

#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

namespace {

constexpr const char* kFullDevice = "/dev/full";
constexpr unsigned int kNobody = 65534;

enum EExitStatus
{
    EXIT_FAILED = 0,
    EXIT_SAVED = 1,
    EXIT_NOT_TRIED = 2
};

}  // namespace

std::optional<bool> KvSaveToFullDevice(const std::function<bool(const char* path)>& save)
{
    if (!std::filesystem::is_character_file(kFullDevice))
        return {};
    const pid_t child = fork();
    if (child == 0) {
        const bool dropped = geteuid() != 0 || (setgid(kNobody) == 0 && setuid(kNobody) == 0);
        if (!dropped)
            _exit(EXIT_NOT_TRIED);
        _exit(save(kFullDevice) ? EXIT_SAVED : EXIT_FAILED);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status) ||
        WEXITSTATUS(status) == EXIT_NOT_TRIED)
        return {};
    return WEXITSTATUS(status) != EXIT_FAILED;
}
