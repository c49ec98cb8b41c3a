#include "bench/KvBenchStatistics.h"

#include <gtest/gtest.h>

#include <array>

namespace {

TEST(KvBenchStatisticsTest, MedianIgnoresOutliersAndOrder)
{
    EXPECT_DOUBLE_EQ(KvMedian({900, 3, 1}), 3);
    EXPECT_DOUBLE_EQ(KvMedian({4, 900, 2, 1}), 3);
    EXPECT_DOUBLE_EQ(KvMedian({7}), 7);
}

TEST(KvBenchStatisticsTest, ExponentIsThatOfThePowerLaw)
{
    const std::array<double, 3> sizes = {1, 4, 100};
    const std::array<double, 3> quadratic = {3, 48, 30'000};
    const std::array<double, 3> root = {5, 10, 50};
    EXPECT_NEAR(KvGrowthExponent(sizes, quadratic), 2, 1e-9);
    EXPECT_NEAR(KvGrowthExponent(sizes, root), 0.5, 1e-9);
}

}  // namespace
