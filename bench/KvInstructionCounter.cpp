#include "bench/KvInstructionCounter.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string_view>
#include <thread>

namespace {

constexpr std::string_view kTotals = "totals: ";

/// What callgrind has counted; 0 when the file does not tell.
double ReadTotal(const std::string& path)
{
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(kTotals))
            return std::strtod(line.c_str() + kTotals.size(), nullptr);
    }
    std::fprintf(stderr, "bench: no count in '%s'\n", path.c_str());
    return 0;
}

/// 0 when the process fails.
double Count(const std::string& valgrind, const CKvProcess& process, const std::string& counts)
{
    CKvProcess counted = process;
    counted.command.insert(counted.command.begin(),
                           {valgrind, "--tool=callgrind", "-q", "--callgrind-out-file=" + counts});
    CKvProcessCost ignored;
    return KvMeasureProcess(counted, ignored) ? ReadTotal(counts) : 0;
}

}  // namespace

bool KvCountInstructions(const std::vector<CKvProcess>& processes, const std::string& folder,
                         std::optional<std::vector<double>>& counts)
{
    const std::string valgrind = KvFindProgram("valgrind");
    if (valgrind.empty())
        return true;
    counts.emplace(processes.size());
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t i = next++; i < processes.size(); i = next++)
            (*counts)[i] =
                Count(valgrind, processes[i], folder + "/callgrind." + std::to_string(i));
    };
    std::thread second(work);
    work();
    second.join();
    for (const double count : *counts) {
        if (count == 0)
            return false;
    }
    return true;
}
