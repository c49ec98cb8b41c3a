#include "bench/KvBenchChild.h"

#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "bench/KvDepthChild.h"
#include "bench/KvLibraryRows.h"
#include "bench/KvOutputRows.h"
#include "bench/KvPeerTranslation.h"
#include "bench/KvStrainRows.h"
#include "bench/KvYardstick.h"

namespace {

bool Limit(int resource, const char* text)
{
    rlimit limit = {};
    if (getrlimit(static_cast<__rlimit_resource>(resource), &limit) != 0)
        return false;
    limit.rlim_cur = std::strtoull(text, nullptr, 10);
    return setrlimit(static_cast<__rlimit_resource>(resource), &limit) == 0;
}

/// Becomes another program, under limits: bytes of stack, seconds of CPU, then the command.
bool RunLimited(std::span<const char* const> arguments)
{
    if (arguments.size() < 3 || !Limit(RLIMIT_STACK, arguments[0]) ||
        !Limit(RLIMIT_CPU, arguments[1]))
        return false;
    std::vector<char*> command;
    for (const char* word : arguments.subspan(2))
        command.push_back(const_cast<char*>(word));
    command.push_back(nullptr);
    execv(command[0], command.data());
    return false;
}

struct CAction
{
    std::string_view name;
    bool (*run)(std::span<const char* const> arguments);
};

constexpr CAction kActions[] = {
    {"yardstick", KvRunYardstick},  {"limit", RunLimited},
    {"copy", KvRunPlainCopy},       {"translate", KvRunTranslate},
    {"convert", KvRunConvert},      {"load-binary", KvRunLoadBinary},
    {"read-whole", KvRunReadWhole}, {"save-names", KvRunSaveNames},
    {"depth", KvRunDepth},
};

}  // namespace

int KvRunBenchChild(std::span<const char* const> words)
{
    for (const CAction& action : kActions) {
        if (!words.empty() && action.name == words.front())
            return action.run(words.subspan(1)) ? 0 : 1;
    }
    std::fprintf(stderr, "bench: no such child\n");
    return 2;
}
