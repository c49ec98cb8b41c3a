#include "math/KvTransform.h"

#include <gtest/gtest.h>

#include "tests/math/KvMathMatchers.h"

namespace {

TEST(KvTransformTest, WorldIsScaleThenRotationThenTranslation)
{
    CKvTransform transform;
    transform.SetPosition(CKvVector3(1, 2, 3));
    const CKvEulerAngles angles(0.3F, 2, -1);
    const auto rotation = CKvMatrix44::makeRotation(angles, CKvMatrix44::ROTATION_XZY);
    transform.SetRotation(rotation);
    transform.SetScale(CKvVector3(2, 3, 4));
    transform.UpdateWorldTM();
    EXPECT_TRUE(IsNear(transform.GetRotation(), angles, 1e-6F));
    EXPECT_TRUE(IsNear(transform.GetRotationMatrix(), rotation, 1e-6F));
    const CKvVector3 scaledThenTurned =
        rotation.TransformDirection(CKvVector3(2 * 5, 3 * 6, 4 * 7));
    EXPECT_TRUE(IsNear(transform.GetWorldTM().TransformPoint({5, 6, 7}),
                       scaledThenTurned + CKvVector3(1, 2, 3), 1e-5F));

    const CKvMatrix44 before = transform.GetWorldTM();
    transform.LockWorldTM();
    transform.SetRotation(CKvEulerAngles(0, 0, kPi / 2));
    transform.UpdateWorldTM();
    EXPECT_EQ(transform.GetWorldTM(), before);
    transform.UnlockWorldTM();
    transform.UpdateWorldTM();
    EXPECT_TRUE(
        IsNear(transform.GetWorldTM().TransformPoint({1, 0, 0}), CKvVector3(1, 4, 3), 1e-6F));
}

}  // namespace
