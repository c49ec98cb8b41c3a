// What the benchmark makes of its measurements: figures, and verdicts on them.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "bench/KvBenchStatistics.h"
#include "bench/KvGoals.h"

namespace {

TEST(BenchGoals, AFigureIsJudgedByMustAndAim)
{
    const CKvGoal goal = {"1", "", 1.0, 0.5};
    const struct
    {
        std::optional<double> figure;
        bool fails;
        std::string_view verdict;
    } cases[] = {
        {0.5, false, "met"},
        {0.6, false, "aim missed"},
        {1.0, false, "aim missed"},
        {1.1, false, "MISSED"},
        {std::numeric_limits<double>::quiet_NaN(), false, "MISSED"},
        {std::nullopt, false, "not measured"},
        {std::nullopt, true, "MISSED"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(KvVerdict(goal, {"1", one.figure, "", one.fails}), one.verdict)
            << one.figure.value_or(-1);
}

TEST(BenchGoals, StatisticsOfKnownSamples)
{
    EXPECT_EQ(KvMedian({9, 1, 5}), 5);
    EXPECT_EQ(KvMedian({9, 1, 5, 7}), 6);
    const double sizes[] = {1, 4, 16};
    const double costs[] = {3, 3 * 8, 3 * 64};
    EXPECT_NEAR(KvGrowthExponent(sizes, costs), 1.5, 1e-9);
}

}  // namespace
