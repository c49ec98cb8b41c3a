#include "math/KvQuaternion.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "math/KvMatrix44.h"
#include "tests/math/KvMathMatchers.h"

namespace {

constexpr CKvQuaternion kI(1, 0, 0, 0);
constexpr CKvQuaternion kJ(0, 1, 0, 0);
constexpr CKvQuaternion kK(0, 0, 1, 0);
constexpr CKvQuaternion kOneToFour(1, 2, 3, 4);

static_assert(kI * kJ == kK && kJ * kK == kI && kK * kI == kJ && kJ * kI == -kK);
static_assert(CKvQuaternion(1) * kOneToFour == kOneToFour && kI * kI == -CKvQuaternion(1));
static_assert((kOneToFour * kOneToFour.GetInverse()).isIdentity(1e-6F));
static_assert(!(-CKvQuaternion(1)).isIdentity(1.0F) && kOneToFour.Equal({1, 2, 3, 4.5F}, 0.5F));
static_assert(!kOneToFour.Equal({1, 2, 3, 4.5F}, 0.4F));
static_assert(kOneToFour.getConjugate() == CKvQuaternion(CKvVector3(-1, -2, -3), 4));

TEST(KvQuaternionTest, ZeroNormalisesAndInvertsToTheIdentityAndSaysSo)
{
    CKvQuaternion quaternion(0, 0, 0, 0);
    EXPECT_FALSE(quaternion.normalize());
    EXPECT_EQ(quaternion, CKvQuaternion(1));
    quaternion = CKvQuaternion(0, 0, 0, 0);
    EXPECT_TRUE(!quaternion.Invert() && quaternion == CKvQuaternion(1));

    quaternion = kOneToFour;
    CKvQuaternion fast = kOneToFour;
    EXPECT_TRUE(quaternion.normalize());
    fast.normalizeFast();
    EXPECT_NEAR(quaternion.getLength(), 1, 1e-6);
    EXPECT_TRUE(fast.Equal(quaternion, 1e-6F));
    for (const CKvQuaternion& other : {-kOneToFour, kOneToFour}) {
        quaternion.makeClosest(other);
        EXPECT_GT(quaternion.x * other.x, 0);
    }
}

TEST(KvQuaternionTest, TurnsVectorsAsItsMatrixAndAsTheElementaryRotationsDo)
{
    CSeededFloats floats;
    for (int i = 0; i < 200; ++i) {
        const float angle = floats.Next(-7, 7);
        CKvVector3 axis = floats.NextVector(1);
        ASSERT_TRUE(axis.Normalize());
        const CKvVector3 vector = floats.NextVector(10);
        CKvMatrix44 matrix;

        const auto aboutZ = CKvQuaternion::makeRotation({CKvVector3(0, 0, 1), angle});
        matrix.setRotationZ(angle);
        ASSERT_TRUE(IsNear(aboutZ.Rotate(vector), matrix.TransformDirection(vector), 1e-5F));

        const auto first = CKvQuaternion::makeRotation({axis, angle});
        matrix.setRotation(first * 3.0F, 1);
        ASSERT_TRUE(IsNear(first.Rotate(vector), matrix.TransformDirection(vector), 1e-5F));
        ASSERT_TRUE(
            IsNear((aboutZ * first).Rotate(vector), aboutZ.Rotate(first.Rotate(vector)), 1e-5F));

        CKvMatrix44 forColumns;
        forColumns.setRotation(first * 3.0F, 0);
        ASSERT_EQ(forColumns.getTranspose(), matrix);
    }
    CKvMatrix44 ofZero;
    ofZero.setRotation(CKvQuaternion(0, 0, 0, 0), 0);
    EXPECT_EQ(ofZero, CKvMatrix44::makeIdentity());
}

TEST(KvPackedQuaternionTest, EveryWordLoadsAsItsFieldsSayAndStoresAgain)
{
    CKvQuaternion loaded(0);
    loaded = CKvPackedQuaternion(0);
    EXPECT_EQ(loaded, CKvQuaternion(1));

    // A step that is prime to 2^32 meets the values of each field many times.
    constexpr std::uint32_t kStride = 42949;
    for (std::uint64_t next = 0; next <= UINT32_MAX; next += kStride) {
        const auto word = static_cast<std::uint32_t>(next);
        const auto field = [word](unsigned int first) {
            const auto bits = static_cast<int>(word >> first & 0x3FFU);
            return static_cast<float>(bits < 512 ? bits : bits - 1024) * 0.0019569471F;
        };
        const CKvVector3 vector(field(0), field(10), field(20));
        const float rest = 1 - vector.GetSquaredLength();
        CKvQuaternion expected(vector, rest > 0 ? std::sqrt(rest) : 0.0F);
        if (word >> 30U != 0)
            expected.w = -expected.w;
        expected.normalize();
        loaded = CKvPackedQuaternion(word);
        ASSERT_TRUE(loaded.Equal(expected, 1e-6F)) << word;

        if (rest > 0) {
            CKvPackedQuaternion packed;
            loaded.StorePacked(&packed);
            const std::uint32_t sign = word >> 30U != 0 ? 3U << 30U : 0U;
            ASSERT_EQ(packed.word, (word & 0x3FFFFFFFU) | sign);
        }
    }
}

}  // namespace
