#include "system/KvRandomValue.h"

#include <gtest/gtest.h>

#include <climits>

#include "system/KvMemCounter.h"

namespace {

TEST(KvRandomValueTest, GivesTheKnownSequenceAndItsPartsOfRanges)
{
    CKvRandomValue random;
    for (const int expected : {0, 21468, 9988, 22117})
        EXPECT_EQ(random.GetNextInt(), expected);

    random.Reseed(INT_MIN);
    CKvRandomValue floats = random;
    for (int i = 0; i < 100'000; ++i) {
        CKvRandomValue of = floats;
        CKvRandomValue between = floats;
        const float part = static_cast<float>(random.GetNextInt()) / 32767.0F;
        const float centered = floats.GetNextFloatCentered(3.0F);
        ASSERT_NEAR(centered, part * 6.0F - 3.0F, 1e-5F);
        ASSERT_TRUE(centered >= -3.0F && centered <= 3.0F);
        ASSERT_NEAR(of.GetNextFloat(-5.0F), part * -5.0F, 1e-5F);
        const float value = between.GetNextFloat(2.0F, 4.0F);
        ASSERT_NEAR(value, 2.0F + part * 2.0F, 1e-5F);
        ASSERT_TRUE(value >= 2.0F && value <= 4.0F);
    }
}

TEST(KvMemCounterTest, PeaksStayWhenMemoryGoes)
{
    CKvMemCounter counter;
    counter.Add(100, 50);
    counter.Sub(100, 50);
    counter.Add(30, 60);
    EXPECT_EQ(counter.AmountTotal(), 90U);
    EXPECT_EQ(counter.PeakRAM(), 100U);
    EXPECT_EQ(counter.PeakVRAM(), 60U);
    EXPECT_EQ(counter.PeakTotal(), 160U);
    counter.Sub(31, 60);
    EXPECT_EQ(counter.AmountRAM(), UINT_MAX);
    EXPECT_EQ(counter.Count(), 0U);
}

}  // namespace
