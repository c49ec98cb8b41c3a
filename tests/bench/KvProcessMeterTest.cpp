#include "bench/KvProcessMeter.h"

#include <gtest/gtest.h>

namespace {

TEST(KvProcessMeterTest, OnlyAProgramThatEndsWellIsMeasured)
{
    CKvProcessCost cost;
    EXPECT_TRUE(KvMeasureProcess({"/bin/sh", "-c", "test \"$1\" = 'a b'", "sh", "a b"}, cost));
    EXPECT_GT(cost.peakBytes, 100'000);
    EXPECT_FALSE(KvMeasureProcess({"/bin/sh", "-c", "exit 255"}, cost));
    EXPECT_FALSE(KvMeasureProcess({"/bin/sh", "-c", "kill -9 $$"}, cost));
    EXPECT_FALSE(KvMeasureProcess({"/absent/program"}, cost));
}

}  // namespace
