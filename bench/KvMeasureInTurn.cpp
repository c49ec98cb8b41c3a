#include "bench/KvMeasureInTurn.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <system_error>
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

bool KvReadRounds(const char* program, int argc, char** argv, int& rounds)
{
    if (argc == 1)
        return true;
    if (argc == 2) {
        const char* const end = argv[1] + std::strlen(argv[1]);
        const auto [stop, error] = std::from_chars(argv[1], end, rounds);
        if (error == std::errc() && stop == end && rounds >= 1 && rounds <= 1000)
            return true;
    }
    std::fprintf(stderr, "Usage: %s [ROUNDS]\n", program);
    return false;
}
