#include "bench/KvWorkload.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

#include "bench/KvBenchStatistics.h"
#include "bench/KvTemporaryFolder.h"

namespace {

/// A sample covers so many objects at least; shorter runs would be lost in the clock's grain.
constexpr std::uint32_t kObjectsPerSample = 24'000;

using CSamples = std::vector<CKvProcessCost>;

std::vector<std::string> ToolCommand(const std::string& tool, const CKvWorkload& workload)
{
    const CKvInputPaths& inputs = workload.inputs;
    return {tool,
            inputs.level,
            inputs.rules,
            workload.output,
            inputs.firstTemplates,
            inputs.secondTemplates,
            "LE"};
}

std::vector<std::string> YardstickCommand(std::vector<std::string> words,
                                          const CKvWorkload& workload)
{
    const CKvInputPaths& inputs = workload.inputs;
    words.insert(words.end(),
                 {inputs.level, inputs.firstTemplates, inputs.secondTemplates, inputs.rules});
    return words;
}

/// Adds the mean of \a repeats runs to the samples; of the memory, the most that any run took.
bool Sample(const std::vector<std::string>& command, std::uint32_t repeats, CSamples& samples)
{
    CKvProcessCost sample;
    for (std::uint32_t i = 0; i < repeats; ++i) {
        CKvProcessCost cost;
        if (!KvMeasureProcess(command, cost))
            return false;
        sample.userSeconds += cost.userSeconds / repeats;
        sample.systemSeconds += cost.systemSeconds / repeats;
        sample.peakBytes = std::max(sample.peakBytes, cost.peakBytes);
    }
    samples.push_back(sample);
    return true;
}

CKvProcessCost MedianCost(const CSamples& samples)
{
    const auto median = [&samples](double CKvProcessCost::*figure) {
        std::vector<double> values;
        values.reserve(samples.size());
        for (const CKvProcessCost& sample : samples)
            values.push_back(sample.*figure);
        return KvMedian(std::move(values));
    };
    return {median(&CKvProcessCost::userSeconds), median(&CKvProcessCost::systemSeconds),
            median(&CKvProcessCost::peakBytes)};
}

std::uint64_t FileBytes(const std::string& path)
{
    std::error_code error;
    const std::uintmax_t sizeBytes = std::filesystem::file_size(path, error);
    return error ? 0 : sizeBytes;
}

}  // namespace

bool KvPrepareWorkloads(std::vector<CKvWorkload>& workloads, const std::string& folder)
{
    for (CKvWorkload& workload : workloads) {
        const std::string own = KvMakeFolder(folder, workload.name);
        if (own.empty() || !KvGenerateInputs(workload.parameters, own, workload.inputs)) {
            std::fprintf(stderr, "bench: cannot write the inputs '%s' in %s\n",
                         workload.name.c_str(), folder.c_str());
            return false;
        }
        workload.output = own + "/bench.game";
        workload.levelBytes = FileBytes(workload.inputs.level);
    }
    return true;
}

bool KvMeasureWorkloads(std::vector<CKvWorkload>& workloads, const CKvBenchPrograms& programs,
                        int rounds)
{
    std::vector<CSamples> toolSamples(workloads.size());
    std::vector<CSamples> yardstickSamples(workloads.size());
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < workloads.size(); ++i) {
            const CKvWorkload& workload = workloads[i];
            const std::uint32_t repeats =
                std::max(1U, kObjectsPerSample / std::max(1U, workload.parameters.objects));
            if (!Sample(ToolCommand(programs.tool, workload), repeats, toolSamples[i]) ||
                !Sample(YardstickCommand(programs.yardstick, workload), repeats,
                        yardstickSamples[i]))
                return false;
        }
    }
    for (std::size_t i = 0; i < workloads.size(); ++i) {
        workloads[i].tool = MedianCost(toolSamples[i]);
        workloads[i].yardstick = MedianCost(yardstickSamples[i]);
        workloads[i].outputBytes = FileBytes(workloads[i].output);
    }
    return true;
}
