#include "system/KvRandomValue.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

namespace {

TEST(KvRandomValueTest, GivesTheKnownSequenceAndItsPartsOfRanges)
{
    CKvRandomValue random;
    for (const int expected : {0, 21468, 9988, 22117})
        EXPECT_EQ(random.GetNextInt(), expected);

    random.Reseed(INT_MIN);
    CKvRandomValue floats = random;
    for (int i = 0; i < 100'000; ++i) {
        CKvRandomValue between = floats;
        const float part = static_cast<float>(random.GetNextInt()) / 32767.0F;
        const float centered = floats.GetNextFloatCentered(3.0F);
        const float value = between.GetNextFloat(2.0F, 4.0F);
        ASSERT_TRUE(std::abs(centered - (part * 6.0F - 3.0F)) < 1e-5F &&
                    std::abs(centered) <= 3.0F);
        ASSERT_TRUE(std::abs(value - (2.0F + part * 2.0F)) < 1e-5F && value >= 2.0F &&
                    value <= 4.0F);
    }
}

}  // namespace
