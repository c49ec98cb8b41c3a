#include "bench/KvSpeedBench.h"

#include <string_view>

#include "bench/KvBenchStatistics.h"

namespace {

constexpr std::string_view kOneMegabyte = "1MB";
constexpr std::string_view kTenMegabytes = "10MB";
constexpr std::string_view kHundredMegabytes = "100MB";
constexpr std::string_view kFewRules = "100rules";
constexpr std::string_view kManyRules = "10000rules";

constexpr double kMostCpu = 2.0;
constexpr double kMostMemory = 1.6;
constexpr double kMostGrowth = 1.1;

CKvInputParameters Sized(std::uint32_t objects)
{
    CKvInputParameters parameters;
    parameters.objects = objects;
    return parameters;
}

/// Rules without templates, excepted texts and overrides: few bytes to parse, all to match.
CKvInputParameters LeanRules(std::uint32_t rules)
{
    CKvInputParameters parameters;
    parameters.rules = rules;
    parameters.templates = 0;
    parameters.exceptedPerRule = 0;
    parameters.overridesPerRule = 0;
    parameters.parametersPerRule = 1;
    return parameters;
}

const CKvWorkload* Find(const std::vector<CKvWorkload>& workloads, std::string_view name)
{
    for (const CKvWorkload& workload : workloads) {
        if (workload.name == name)
            return &workload;
    }
    return nullptr;
}

void AddStandardFigures(const std::vector<CKvWorkload>& measured,
                        std::vector<CKvBenchFigure>& figures)
{
    const CKvWorkload* standard = Find(measured, kTenMegabytes);
    if (standard == nullptr)
        return;
    figures.push_back({"CPU of the tool / yardstick, 10 MB",
                       standard->tool.CpuSeconds() / standard->yardstick.CpuSeconds(), kMostCpu});
    figures.push_back({"peak memory of the tool / yardstick, 10 MB",
                       standard->tool.peakBytes / standard->yardstick.peakBytes, kMostMemory});
}

void AddGrowth(const std::vector<CKvWorkload>& measured, std::vector<CKvBenchFigure>& figures)
{
    std::vector<double> sizes;
    std::vector<double> costs;
    for (const std::string_view name : {kOneMegabyte, kTenMegabytes, kHundredMegabytes}) {
        const CKvWorkload* workload = Find(measured, name);
        if (workload == nullptr)
            return;
        sizes.push_back(static_cast<double>(workload->levelBytes));
        costs.push_back(workload->tool.userSeconds);
    }
    figures.push_back({"growth of the tool's user time, 1 MB to 100 MB, exponent",
                       KvGrowthExponent(sizes, costs), kMostGrowth});
}

void AddRuleFigures(const std::vector<CKvWorkload>& measured, std::vector<CKvBenchFigure>& figures)
{
    const CKvWorkload* few = Find(measured, kFewRules);
    const CKvWorkload* many = Find(measured, kManyRules);
    if (few == nullptr || many == nullptr)
        return;
    figures.push_back({"CPU of the tool, 10,000 rules / 100 rules, 10 MB",
                       many->tool.CpuSeconds() / few->tool.CpuSeconds(), std::nullopt});
    figures.push_back({"the same for the yardstick",
                       many->yardstick.CpuSeconds() / few->yardstick.CpuSeconds(), std::nullopt});
}

}  // namespace

std::vector<CKvWorkload> KvSpeedWorkloads(bool quick)
{
    std::vector<CKvWorkload> workloads;
    const auto add = [&workloads](std::string_view name, const CKvInputParameters& parameters) {
        CKvWorkload& workload = workloads.emplace_back();
        workload.name = name;
        workload.parameters = parameters;
    };
    add(kTenMegabytes, Sized(24'000));
    if (quick)
        return workloads;
    add(kOneMegabyte, Sized(2'400));
    add(kHundredMegabytes, Sized(240'000));
    add(kFewRules, LeanRules(100));
    add(kManyRules, LeanRules(10'000));
    return workloads;
}

std::vector<CKvBenchFigure> KvSpeedFigures(const std::vector<CKvWorkload>& measured)
{
    std::vector<CKvBenchFigure> figures;
    AddStandardFigures(measured, figures);
    AddGrowth(measured, figures);
    AddRuleFigures(measured, figures);
    return figures;
}
