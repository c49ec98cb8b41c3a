#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdint>
#include <limits>

#include "math/KvPackedNormal.h"
#include "math/KvVector2.h"
#include "math/KvVector2i.h"
#include "math/KvVector3.h"
#include "tests/math/KvMathMatchers.h"

namespace {

constexpr CKvHENDN3 Pack(float x, float y, float z)
{
    CKvHENDN3 packed(0);
    CKvVector3(x, y, z).StoreHENDN3(&packed);
    return packed;
}

// Constant expressions: what has no root, sine or cosine in it.
static_assert((CKvVector3(1, 0, 0) ^ CKvVector3(0, 1, 0)) == CKvVector3(0, 0, 1));
static_assert(CKvVector3(-1, 2, -3).GetLength1() == 6 && CKvVector2(1, 2).DotProduct({3, 4}) == 11);
static_assert(2 * CKvVector3(1, 2, 3) / CKvVector3(1, 2, 4) - 1 == CKvVector3(1, 1, 0.5F));
static_assert(CKvVector2(2, 3).GetPerpendicularLeft() == CKvVector2(-3, 2));
static_assert(CKvVector2(2, 3).GetPerpendicularRight() == CKvVector2(3, -2));
static_assert(!(CKvVector3(1, 2, 3) < CKvVector3(1, 2, 3)));
static_assert(CKvVector3(1, 2, 0) < CKvVector3(0, 0, 4) &&
              CKvVector3(0, 0, 4) < CKvVector3(1, 2, 0));
static_assert(CKvVector2i(INT_MAX, INT_MIN) + 1 == CKvVector2i(INT_MIN, INT_MIN + 1));
static_assert(CKvVector2i(INT_MIN, 7) / CKvVector2i(-1, 0) == CKvVector2i(INT_MIN, 0));
static_assert(-CKvVector2i(INT_MIN, 7) == CKvVector2i(INT_MIN, -7));
static_assert(Pack(1, -1, 0.5F).word == 0x40200BFFU && Pack(9, -9, 0.5F).word == 0x40200BFFU);

TEST(KvVectorTest, RotatesCounterClockwiseAndNormalisesAllButZero)
{
    CKvVector2 turned(2, 0);
    turned.Rotate(kPi / 2);
    EXPECT_TRUE(IsNear(turned, CKvVector2(0, 2), 1e-6F));
    CKvVector3 zero;
    EXPECT_FALSE(zero.Normalize());
    EXPECT_EQ(zero, CKvVector3());
}

TEST(KvPackedNormalTest, EachFieldOfEachValueLoadsAndStoresAgainButTheOneBelowMinusOne)
{
    for (std::uint32_t field = 0; field < 2048; ++field) {
        const std::uint32_t shortField = field & 0x3FFU;
        const std::uint32_t word = field | (2047U - field) << 11U | shortField << 22U;
        const CKvHENDN3 packed(word);
        const CKvVector3 loaded(&packed);
        const int x = field < 1024 ? static_cast<int>(field) : static_cast<int>(field) - 2048;
        const int z = static_cast<int>(shortField) - (shortField < 512 ? 0 : 1024);
        ASSERT_EQ(loaded.x, static_cast<float>(x) * 0.0009775171F);
        ASSERT_EQ(loaded.y, static_cast<float>(-1 - x) * 0.0009775171F);
        ASSERT_EQ(loaded.z, static_cast<float>(z) * 0.0019569471F);

        // -1024 and -512 are beyond -1 and come back as -1023 and -511.
        const auto clamped = [](std::uint32_t bits, std::uint32_t least) {
            return bits == least ? bits + 1 : bits;
        };
        const std::uint32_t expected = clamped(field, 1024) | clamped(2047U - field, 1024) << 11U |
                                       clamped(shortField, 512) << 22U;
        ASSERT_EQ(Pack(loaded.x, loaded.y, loaded.z).word, expected);
    }
}

TEST(KvPackedNormalTest, RoundsToTheNearestStepAndTiesToEven)
{
    for (int quarter = -4 * 511; quarter <= 4 * 511; ++quarter) {
        const float steps = static_cast<float>(quarter) / 4.0F;
        const float value = steps / 511.0F;
        if (value * 511.0F != steps)
            continue;  // the product is itself rounded off the tie
        ASSERT_EQ(static_cast<float>(KvUnitToSteps(value, 511)), std::nearbyint(steps)) << steps;
    }
    const float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(Pack(std::numeric_limits<float>::quiet_NaN(), infinity, -infinity),
              Pack(0.0F, 1.0F, -1.0F));
}

}  // namespace
