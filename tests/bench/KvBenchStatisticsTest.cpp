#include "bench/KvBenchStatistics.h"

#include <gtest/gtest.h>

#include <array>

namespace {

TEST(KvBenchStatisticsTest, MedianIgnoresOutliersAndTheExponentIsThatOfThePowerLaw)
{
    EXPECT_DOUBLE_EQ(KvMedian({900, 3, 1}), 3);
    EXPECT_DOUBLE_EQ(KvMedian({4, 900, 2, 1}), 3);
    const std::array<double, 3> sizes = {1, 4, 100};
    const std::array<double, 3> quadratic = {3, 48, 30'000};
    EXPECT_NEAR(KvGrowthExponent(sizes, quadratic), 2, 1e-9);
}

}  // namespace
