#include "bench/KvSpeedRows.h"

#include <algorithm>
#include <array>

#include "bench/KvBenchStatistics.h"
#include "bench/KvMeasureProcesses.h"
#include "bench/KvTemporaryFolder.h"

namespace {

constexpr std::uint32_t kSmall = 24'000;
constexpr std::uint32_t kLarge = 240'000;
constexpr std::uint32_t kHuge = 1'000'000;

/// A run of the huge level takes as long as ten of the others.
constexpr int kHugeRounds = 3;

constexpr double kMegabyte = 1e6;

CKvInputParameters Sized(std::uint32_t objects)
{
    CKvInputParameters parameters;
    parameters.objects = objects;
    return parameters;
}

/// Rules without templates, excepted texts and overrides: few bytes to parse, all to match.
CKvInputParameters LeanRules(std::uint32_t rules)
{
    CKvInputParameters parameters = Sized(kSmall);
    parameters.rules = rules;
    parameters.templates = 0;
    parameters.exceptedPerRule = 0;
    parameters.overridesPerRule = 0;
    parameters.parametersPerRule = 1;
    return parameters;
}

void AddStandard(const char* size, const CKvProcessCost& tool, const CKvProcessCost& yardstick,
                 CKvFindings& findings)
{
    findings.push_back({"1", tool.CpuSeconds() / yardstick.CpuSeconds(),
                        KvNote("%s; tool %.3f s, TinyXML %.3f s", size, tool.CpuSeconds(),
                               yardstick.CpuSeconds())});
    findings.push_back({"3", tool.peakBytes / yardstick.peakBytes,
                        KvNote("%s; tool %.1f MB, TinyXML %.1f MB", size,
                               tool.peakBytes / kMegabyte, yardstick.peakBytes / kMegabyte)});
}

void AddGrowth(std::string_view row, std::array<double, 2> objects, std::array<double, 2> seconds,
               CKvFindings& findings)
{
    findings.push_back({row, KvGrowthExponent(objects, seconds),
                        KvNote("tool: %.0f objects %.3f s, %.0f objects %.3f s", objects[0],
                               seconds[0], objects[1], seconds[1])});
}

bool MeasureStandard(const CKvBenchRun& run, const std::string& folder, double& largeSeconds,
                     CKvFindings& findings)
{
    CKvInputPaths small;
    if (!KvPrepareInputs(Sized(kSmall), folder, "10MB", small))
        return false;
    std::vector<CKvMeasuredProcess> measured = {{run.Tool(small)}, {run.Yardstick(small)}};
    if (!run.quick) {
        CKvInputPaths large;
        if (!KvPrepareInputs(Sized(kLarge), folder, "100MB", large))
            return false;
        measured.push_back({run.Tool(large)});
        measured.push_back({run.Yardstick(large)});
    }
    if (!KvMeasureProcesses(measured, run.rounds))
        return false;
    if (run.quick) {
        AddStandard("10 MB", measured[0].cost, measured[1].cost, findings);
        return true;
    }
    AddStandard("100 MB", measured[2].cost, measured[3].cost, findings);
    largeSeconds = measured[2].cost.userSeconds;
    AddGrowth("4a", {kSmall, kLarge}, {measured[0].cost.userSeconds, largeSeconds}, findings);
    return true;
}

bool MeasureHuge(const CKvBenchRun& run, const std::string& folder, double largeSeconds,
                 CKvFindings& findings)
{
    CKvInputPaths huge;
    if (!KvPrepareInputs(Sized(kHuge), folder, "417MB", huge))
        return false;
    std::vector<CKvMeasuredProcess> measured = {{run.Tool(huge)}};
    if (!KvMeasureProcesses(measured, std::min(run.rounds, kHugeRounds)))
        return false;
    AddGrowth("4b", {kLarge, kHuge}, {largeSeconds, measured[0].cost.userSeconds}, findings);
    return true;
}

bool MeasureRules(const CKvBenchRun& run, const std::string& folder, CKvFindings& findings)
{
    CKvInputPaths few;
    CKvInputPaths many;
    if (!KvPrepareInputs(LeanRules(100), folder, "100rules", few) ||
        !KvPrepareInputs(LeanRules(10'000), folder, "10000rules", many))
        return false;
    std::vector<CKvMeasuredProcess> measured = {
        {run.Tool(few)}, {run.Tool(many)}, {run.Yardstick(few)}, {run.Yardstick(many)}};
    if (!KvMeasureProcesses(measured, run.rounds))
        return false;
    const auto seconds = [&measured](std::size_t i) { return measured[i].cost.CpuSeconds(); };
    findings.push_back({"5", seconds(1) / seconds(0),
                        KvNote("10 MB; tool %.3f s / %.3f s; the same for TinyXML: %.3f",
                               seconds(1), seconds(0), seconds(3) / seconds(2))});
    return true;
}

}  // namespace

bool KvMeasureSpeed(const CKvBenchRun& run, CKvFindings& findings)
{
    const CKvTemporaryFolder folder;
    double largeSeconds = 0;
    return MeasureStandard(run, folder.Path(), largeSeconds, findings) &&
           (run.quick || MeasureHuge(run, folder.Path(), largeSeconds, findings)) &&
           MeasureRules(run, folder.Path(), findings);
}
