#include "bench/KvStrainRows.h"

#include <array>
#include <cstdlib>
#include <string_view>

#include "bench/KvBenchStatistics.h"
#include "bench/KvInstructionCounter.h"
#include "bench/KvMeasureInTurn.h"
#include "bench/KvMeasureProcesses.h"
#include "bench/KvStrainInputs.h"
#include "bench/KvTemporaryFolder.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvScriptTreeSerializerTML.h"

namespace {

constexpr std::uint32_t kNames = 100'000;
constexpr std::uint32_t kSiblings = 1'000'000;

/// Each strain is measured with all of it and with a quarter.
constexpr std::uint32_t kPart = 4;

/// Costs at a quarter and at the whole size, with the strain and without.
struct CStrainCosts
{
    std::array<double, 2> with = {};
    std::array<double, 2> without = {};
};

void AddExponent(std::string_view row, const char* unit, double scale, std::uint32_t size,
                 const CStrainCosts& costs, CKvFindings& findings)
{
    const std::array<double, 2> sizes = {1, kPart};
    const std::array<double, 2> beyond = {costs.with[0] - costs.without[0],
                                          costs.with[1] - costs.without[1]};
    findings.push_back({row, KvGrowthExponent(sizes, beyond),
                        KvNote("%u: %.2f, %u: %.2f %s beyond the same without", size / kPart,
                               beyond[0] * scale, size, beyond[1] * scale, unit)});
}

/// Counts the instructions of four processes: a quarter of the strain with and without, then all.
bool AddCounted(std::string_view row, std::uint32_t size, const std::vector<CKvProcess>& processes,
                const std::string& folder, CKvFindings& findings)
{
    std::optional<std::vector<double>> counts;
    if (!KvCountInstructions(processes, folder, counts))
        return false;
    if (!counts) {
        findings.push_back({row, std::nullopt, "valgrind is not installed"});
        return true;
    }
    const std::vector<double>& count = *counts;
    AddExponent(row, "million instructions (callgrind)", 1e-6, size,
                {{count[0], count[2]}, {count[1], count[3]}}, findings);
    return true;
}

bool CountStrain(const CKvBenchRun& run, const CKvStrain& strain, const std::string& folder,
                 CKvFindings& findings)
{
    std::vector<CKvProcess> processes;
    for (const std::uint32_t size : {strain.size / kPart, strain.size}) {
        for (const bool strained : {true, false}) {
            CKvInputPaths inputs;
            const std::string name = KvNote("%s%u%s", strain.name, size, strained ? "" : "without");
            if (!KvPrepareInputs(strain.parameters(size, strained), folder, name, inputs))
                return false;
            processes.push_back(run.Tool(inputs));
        }
    }
    return AddCounted(strain.row, strain.size, processes, folder, findings);
}

bool CountNames(const CKvBenchRun& run, const std::string& folder, CKvFindings& findings)
{
    std::vector<CKvProcess> processes;
    for (const std::uint32_t nodes : {kNames / kPart, kNames}) {
        for (const std::uint32_t names : {nodes, 1U})
            processes.push_back(run.Child(
                "save-names",
                {std::to_string(nodes), std::to_string(names), folder + "/names.tml", "LE"}));
    }
    return AddCounted("11d", kNames, processes, folder, findings);
}

bool MeasureSiblings(const CKvBenchRun& run, const std::string& folder, CKvFindings& findings)
{
    std::vector<CKvMeasuredProcess> measured;
    for (const std::uint32_t siblings : {kSiblings / kPart, kSiblings, 0U}) {
        CKvInputPaths inputs;
        if (!KvWriteSiblings(siblings, folder, KvNote("siblings%u", siblings), inputs))
            return false;
        measured.push_back({run.Tool(inputs)});
    }
    if (!KvMeasureProcesses(measured, run.rounds))
        return false;
    const auto seconds = [&measured](std::size_t i) { return measured[i].cost.CpuSeconds(); };
    AddExponent("11e", "ms of CPU", 1e3, kSiblings,
                {{seconds(0), seconds(1)}, {seconds(2), seconds(2)}}, findings);
    return true;
}

}  // namespace

bool KvMeasureStrains(const CKvBenchRun& run, CKvFindings& findings)
{
    const CKvTemporaryFolder folder;
    for (const CKvStrain& strain : KvStrains()) {
        if (!CountStrain(run, strain, folder.Path(), findings))
            return false;
    }
    return CountNames(run, folder.Path(), findings) &&
           MeasureSiblings(run, folder.Path(), findings);
}

bool KvRunSaveNames(std::span<const char* const> arguments)
{
    if (arguments.size() != 4)
        return false;
    const long nodes = std::strtol(arguments[0], nullptr, 10);
    const long names = std::strtol(arguments[1], nullptr, 10);
    CKvScriptTree tree;
    CKvScriptTreeNode* root = tree.CreateRootNode(CKvIdentifier("root"));
    for (long i = 0; i < nodes; ++i)
        root->AddNewChild(CKvIdentifier(KvNote("name_%ld", i % names).c_str()));

    const TKvString<char> path = arguments[2];
    const bool bigEndian = std::string_view(arguments[3]) == "BE";
    CKvScriptTreeSerializerTML binary;
    bool saved = false;
    KvPrintSeconds(KvCpuSeconds([&] { saved = binary.Save(tree, path, bigEndian); }));
    return saved;
}
