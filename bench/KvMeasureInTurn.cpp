#include "bench/KvMeasureInTurn.h"

#include <ctime>
#include <vector>

#include "bench/KvBenchStatistics.h"

double KvCpuSeconds(const std::function<void()>& work)
{
    const std::clock_t start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

CKvTurnCosts KvMeasureInTurn(int rounds, const std::function<void()>& ours,
                             const std::function<void()>& yardstick)
{
    ours();
    yardstick();
    std::vector<double> oursSeconds;
    std::vector<double> yardstickSeconds;
    for (int round = 0; round < rounds; ++round) {
        oursSeconds.push_back(KvCpuSeconds(ours));
        yardstickSeconds.push_back(KvCpuSeconds(yardstick));
    }
    return {KvMedian(oursSeconds), KvMedian(yardstickSeconds)};
}
