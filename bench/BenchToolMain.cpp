// KvBenchTool: measures the tool and the library against their goals and prints the table.

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "bench/KvBenchChild.h"
#include "bench/KvBenchRounds.h"
#include "bench/KvBenchRun.h"
#include "bench/KvDepthRows.h"
#include "bench/KvGoals.h"
#include "bench/KvInstructionRows.h"
#include "bench/KvLibraryRows.h"
#include "bench/KvOutputHashes.h"
#include "bench/KvOutputRows.h"
#include "bench/KvSpeedRows.h"
#include "bench/KvStrainRows.h"

namespace {

/// Rows that are measured together.
struct CRowGroup
{
    std::string_view name;
    const char* rows;
    bool isQuick;
    bool (*measure)(const CKvBenchRun& run, CKvFindings& findings);
};

constexpr CRowGroup kGroups[] = {
    {"speed", "1, 3, 4, 5", true, KvMeasureSpeed},
    {"instructions", "2, 10", true, KvMeasureInstructions},
    {"output", "6, 7", true, KvMeasureOutput},
    {"library", "8, 9", true, KvMeasureLibrary},
    {"strains", "11", false, KvMeasureStrains},
    {"depth", "12", false, KvMeasureDepth},
};

struct COptions
{
    CKvBenchRun run;
    std::vector<std::string_view> groups;
    bool hashes = false;
};

constexpr int kQuickRounds = 3;

/// The tool as the build leaves it: in the folder above this program's.
std::string DefaultTool(const std::string& ownPath)
{
    const std::filesystem::path folder = std::filesystem::path(ownPath).parent_path();
    return (folder.parent_path() / "KvGameFileCreator").string();
}

int PrintUsage()
{
    std::fprintf(stderr,
                 "Usage: KvBenchTool [--quick] [--rounds N] [--only GROUP]... [--hashes] "
                 "[PATH OF KvGameFileCreator]\n");
    for (const CRowGroup& group : kGroups)
        std::fprintf(stderr, "  --only %-12s  rows %s\n", group.name.data(), group.rows);
    return 2;
}

bool ReadGroup(std::string_view word, COptions& options)
{
    options.groups.push_back(word);
    return std::any_of(std::begin(kGroups), std::end(kGroups),
                       [word](const CRowGroup& group) { return group.name == word; });
}

bool ReadOptions(std::span<char* const> words, COptions& options)
{
    int rounds = 0;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string_view word = words[i];
        const bool hasValue = i + 1 < words.size();
        if (word == "--quick") {
            options.run.quick = true;
        } else if (word == "--hashes") {
            options.hashes = true;
        } else if (word == "--rounds") {
            if (!hasValue || !KvReadRounds(words[++i], rounds))
                return false;
        } else if (word == "--only") {
            if (!hasValue || !ReadGroup(words[++i], options))
                return false;
        } else if (!word.starts_with("--")) {
            options.run.tool = word;
        } else {
            return false;
        }
    }
    if (options.run.quick)
        options.run.rounds = kQuickRounds;
    if (rounds > 0)
        options.run.rounds = rounds;
    return true;
}

bool IsWanted(const CRowGroup& group, const COptions& options)
{
    if (options.run.quick && !group.isQuick)
        return false;
    return options.groups.empty() || std::find(options.groups.begin(), options.groups.end(),
                                               group.name) != options.groups.end();
}

int RunBench(const COptions& options)
{
    CKvFindings findings;
    for (const CRowGroup& group : kGroups) {
        if (!IsWanted(group, options))
            continue;
        std::fprintf(stderr, "bench: %s (rows %s)\n", group.name.data(), group.rows);
        if (!group.measure(options.run, findings))
            return 1;
    }
    std::printf("tool: %s\nyardstick: TinyXML parses the same documents; medians of %d rounds\n\n",
                options.run.tool.c_str(), options.run.rounds);
    KvPrintGoals(findings);
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    const std::span<char* const> words(argv + 1, static_cast<std::size_t>(argc) - 1);
    if (!words.empty() && words.front() == kKvChildOption)
        return KvRunBenchChild(words.subspan(1));

    COptions options;
    options.run.ownProgram = KvOwnProgramPath();
    options.run.tool = DefaultTool(options.run.ownProgram);
    if (!ReadOptions(words, options))
        return PrintUsage();
    if (options.hashes)
        return KvPrintOutputHashes(options.run) ? 0 : 1;
    return RunBench(options);
}
