// KvBenchTool: compares the tool with the yardstick on generated inputs and prints the figures.

#include <cstdio>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "bench/KvBenchReport.h"
#include "bench/KvBenchRounds.h"
#include "bench/KvProcessMeter.h"
#include "bench/KvSpeedBench.h"
#include "bench/KvTemporaryFolder.h"
#include "bench/KvWorkload.h"
#include "bench/KvYardstick.h"

namespace {

/// Hidden: with it the program is the yardstick's child process, the inputs' paths follow.
constexpr std::string_view kYardstickOption = "--yardstick";

struct COptions
{
    std::string tool;
    int rounds = 5;
    bool quick = false;
};

/// The tool as the build leaves it: in the folder above this program's.
std::string DefaultTool(const std::string& ownPath)
{
    const std::filesystem::path folder = std::filesystem::path(ownPath).parent_path();
    return (folder.parent_path() / "KvGameFileCreator").string();
}

bool ReadOptions(std::span<char* const> words, COptions& options)
{
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string_view word = words[i];
        if (word == "--quick") {
            options.quick = true;
        } else if (word == "--rounds") {
            if (++i == words.size() || !KvReadRounds(words[i], options.rounds))
                return false;
        } else if (!word.starts_with("--")) {
            options.tool = word;
        } else {
            return false;
        }
    }
    return true;
}

int RunBench(const COptions& options, const std::string& ownPath)
{
    const CKvTemporaryFolder folder;
    if (folder.Path().empty()) {
        std::fprintf(stderr, "bench: cannot make a temporary folder\n");
        return 1;
    }
    std::vector<CKvWorkload> workloads = KvSpeedWorkloads(options.quick);
    const CKvBenchPrograms programs = {options.tool, {ownPath, std::string(kYardstickOption)}};
    if (!KvPrepareWorkloads(workloads, folder.Path()) ||
        !KvMeasureWorkloads(workloads, programs, options.rounds))
        return 1;

    std::printf("tool: %s\nmedians of %d rounds\n\n", options.tool.c_str(), options.rounds);
    KvPrintWorkloads(workloads);
    std::printf("\n");
    KvPrintFigures(KvSpeedFigures(workloads));
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    const std::span<char* const> words(argv + 1, static_cast<std::size_t>(argc) - 1);
    if (!words.empty() && words.front() == kYardstickOption)
        return KvRunYardstick(words.subspan(1)) ? 0 : 1;

    const std::string ownPath = KvOwnProgramPath();
    COptions options;
    options.tool = DefaultTool(ownPath);
    if (!ReadOptions(words, options)) {
        std::fprintf(stderr,
                     "Usage: KvBenchTool [--quick] [--rounds N] [PATH OF KvGameFileCreator]\n");
        return 2;
    }
    return RunBench(options, ownPath);
}
