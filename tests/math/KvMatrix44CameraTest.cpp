#include <gtest/gtest.h>

#include "math/KvMatrix44.h"
#include "tests/math/KvMathMatchers.h"

namespace {

using Matrix = CKvMatrix44;

/// The point on the picture, x and y from -1 to 1 and the depth, after division by w.
CKvVector3 Project(const Matrix& projection, float x, float y, float z)
{
    const CKvVector4 clip = CKvVector4(x, y, z, 1) * projection;
    return CKvVector3(clip.x, clip.y, clip.z) / clip.w;
}

/// Expects the corners of the picture at the near plane and its centre at the far one; \a spread is
/// what the picture grows by from the one to the other.
void ExpectMapsFrustum(const Matrix& projection, float front, float spread)
{
    constexpr float kNear = 2;
    constexpr float kFar = 10;
    for (const float side : {-1.0F, 1.0F}) {
        const float x = side < 0 ? -3.0F : 5.0F;
        const float y = side < 0 ? -1.0F : 2.0F;
        EXPECT_TRUE(
            IsNear(Project(projection, x, y, front * kNear), CKvVector3(side, side, 0), 1e-6F));
        EXPECT_TRUE(IsNear(Project(projection, x * spread, y * spread, front * kFar),
                           CKvVector3(side, side, 1), 1e-6F));
    }
}

TEST(KvMatrix44CameraTest, ProjectionsMapTheEdgesToOneAndTheDepthFromZeroToOne)
{
    Matrix matrix;
    matrix.setPerpectiveOffCenterLH(-3, 5, -1, 2, 2, 10);
    ExpectMapsFrustum(matrix, 1, 5);
    matrix.setPerpectiveOffCenterRH(-3, 5, -1, 2, 2, 10);
    ExpectMapsFrustum(matrix, -1, 5);
    matrix.setOrthographicOffCenterLH(-3, 5, -1, 2, 2, 10);
    ExpectMapsFrustum(matrix, 1, 1);
    matrix.setOrthographicOffCenterRH(-3, 5, -1, 2, 2, 10);
    ExpectMapsFrustum(matrix, -1, 1);

    const float top = 2 * std::tan(0.4F);
    matrix.setPerpectiveFovLH(0.8F, 1.5F, 2, 10);
    EXPECT_TRUE(IsNear(Project(matrix, 1.5F * top, top, 2), CKvVector3(1, 1, 0), 1e-6F));
    matrix.setPerpectiveFovRH(0.8F, 1.5F, 2, 10);
    EXPECT_TRUE(IsNear(Project(matrix, 7.5F * top, 5 * top, -10), CKvVector3(1, 1, 1), 1e-6F));
    matrix.setOrthographicLH(8, 6, 2, 10);
    EXPECT_TRUE(IsNear(Project(matrix, 4, 3, 2), CKvVector3(1, 1, 0), 1e-6F));
    matrix.setOrthographicRH(8, 6, 2, 10);
    EXPECT_TRUE(IsNear(Project(matrix, 4, 3, -10), CKvVector3(1, 1, 1), 1e-6F));
}

TEST(KvMatrix44CameraTest, LookAtPutsTheTargetInFrontAndUpUpwards)
{
    const CKvVector3 eye(1, 2, 3);
    const CKvVector3 up(0, 0, 9);
    Matrix left;
    Matrix right;
    ASSERT_TRUE(left.setLookAtLH(eye, eye + CKvVector3(0, 4, 0), up));
    ASSERT_TRUE(right.setLookAtRH(eye, eye + CKvVector3(0, 4, 0), up));
    EXPECT_TRUE(IsNear(left.TransformPoint({1, 6, 3}), CKvVector3(0, 0, 4), 1e-6F));
    EXPECT_TRUE(IsNear(right.TransformPoint({1, 6, 3}), CKvVector3(0, 0, -4), 1e-6F));
    EXPECT_TRUE(IsNear(left.TransformPoint({1, 2, 5}), CKvVector3(0, 2, 0), 1e-6F));
    // The world is right-handed, so what lies along X is to the right for the right hand alone.
    EXPECT_TRUE(IsNear(left.TransformPoint({3, 2, 3}), CKvVector3(-2, 0, 0), 1e-6F));
    EXPECT_TRUE(IsNear(right.TransformPoint({3, 2, 3}), CKvVector3(2, 0, 0), 1e-6F));

    const Matrix before = left;
    EXPECT_FALSE(left.setLookAtLH(eye, eye, up));
    EXPECT_FALSE(left.setLookAtRH(eye, eye - up, up));
    EXPECT_EQ(left, before);
}

}  // namespace
