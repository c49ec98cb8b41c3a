#include "bench/KvMeasureProcesses.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include "bench/KvBenchFile.h"
#include "bench/KvBenchStatistics.h"

namespace {

using CSamples = std::vector<CKvProcessCost>;

bool Sample(const CKvMeasuredProcess& measured, CSamples& samples)
{
    CKvProcessCost cost;
    if (!KvMeasureProcess(measured.process, cost))
        return false;
    if (measured.timesItself) {
        cost.userSeconds = KvReadSeconds(measured.process.output);
        cost.systemSeconds = 0;
    }
    samples.push_back(cost);
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
            median(&CKvProcessCost::peakBytes), median(&CKvProcessCost::touchedBytes)};
}

}  // namespace

bool KvMeasureProcesses(std::vector<CKvMeasuredProcess>& processes, int rounds)
{
    std::vector<CSamples> samples(processes.size());
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < processes.size(); ++i) {
            if (!Sample(processes[i], samples[i]))
                return false;
        }
    }
    for (std::size_t i = 0; i < processes.size(); ++i)
        processes[i].cost = MedianCost(samples[i]);
    return true;
}

void KvPrintSeconds(double seconds)
{
    std::printf("%.9f\n", seconds);
    std::fflush(stdout);
}

double KvReadSeconds(const std::string& path)
{
    std::string text;
    return KvReadWholeFile(path, text) ? std::strtod(text.c_str(), nullptr) : 0;
}
