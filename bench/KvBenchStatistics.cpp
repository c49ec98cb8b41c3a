#include "bench/KvBenchStatistics.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

double KvMedian(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    if (values.size() % 2 != 0)
        return values[middle];
    return (values[middle - 1] + values[middle]) / 2;
}

double KvGrowthExponent(std::span<const double> sizes, std::span<const double> costs)
{
    const auto count = static_cast<double>(sizes.size());
    double sumX = 0;
    double sumY = 0;
    double sumXX = 0;
    double sumXY = 0;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        const double x = std::log(sizes[i]);
        const double y = std::log(costs[i]);
        sumX += x;
        sumY += y;
        sumXX += x * x;
        sumXY += x * y;
    }
    return (count * sumXY - sumX * sumY) / (count * sumXX - sumX * sumX);
}
