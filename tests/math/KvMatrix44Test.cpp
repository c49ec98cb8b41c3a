#include "math/KvMatrix44.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

#include "tests/math/KvMathMatchers.h"

namespace {

constexpr CKvMatrix44 Translation(float x, float y, float z)
{
    CKvMatrix44 matrix;
    matrix.setTranslation(CKvVector3(x, y, z));
    return matrix;
}

constexpr CKvMatrix44 OneToSixteen()
{
    CKvMatrix44 matrix;
    for (int i = 0; i < 16; ++i)
        matrix(i / 4, i % 4) = static_cast<float>(i + 1);
    return matrix;
}

static_assert(OneToSixteen().MultiplyCorrect(CKvMatrix44(1)) == OneToSixteen());
static_assert(OneToSixteen().MultiplyCorrect(OneToSixteen())(1, 2) ==
              5 * 3 + 6 * 7 + 7 * 11 + 8 * 15);
static_assert(OneToSixteen().MultiplyBugged(Translation(4, 5, 6)) ==
              Translation(4, 5, 6).MultiplyCorrect(OneToSixteen()));
static_assert(OneToSixteen().getTranspose()(0, 2) == 9);
static_assert((CKvVector4(1, 2, 3, 1) * Translation(4, 5, 6)) == CKvVector4(5, 7, 9, 1));
static_assert(Translation(4, 5, 6).TransformDirection({1, 2, 3}) == CKvVector3(1, 2, 3));

struct COrder
{
    CKvMatrix44::ERotationOrder order;
    std::array<int, 3> axes;
};

constexpr std::array<COrder, 6> kOrders = {{{CKvMatrix44::ROTATION_XYZ, {0, 1, 2}},
                                            {CKvMatrix44::ROTATION_XZY, {0, 2, 1}},
                                            {CKvMatrix44::ROTATION_YXZ, {1, 0, 2}},
                                            {CKvMatrix44::ROTATION_YZX, {1, 2, 0}},
                                            {CKvMatrix44::ROTATION_ZXY, {2, 0, 1}},
                                            {CKvMatrix44::ROTATION_ZYX, {2, 1, 0}}}};

/// The elementary rotations as they are documented, element by element.
CKvMatrix44 Elementary(int axis, float angle)
{
    const float c = std::cos(angle);
    const float s = std::sin(angle);
    CKvMatrix44 matrix(1);
    if (axis == 0)
        matrix.elements = {1, 0, 0, 0, 0, c, s, 0, 0, -s, c, 0, 0, 0, 0, 1};
    else if (axis == 1)
        matrix.elements = {c, 0, -s, 0, 0, 1, 0, 0, s, 0, c, 0, 0, 0, 0, 1};
    else
        matrix.elements = {c, s, 0, 0, -s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    return matrix;
}

/// Any angle, with those among them at which axes fall together, and near them.
float NextAngle(CSeededFloats& floats, int i)
{
    constexpr std::array<float, 5> kNear = {0, 1e-7F, -1e-6F, 1e-4F, -1e-3F};
    if (i % 2 == 0)
        return floats.Next(-kPi, kPi);
    const auto quarters = static_cast<float>(static_cast<int>(floats.Next(-2.999F, 2.999F)));
    return quarters * kPi / 2 + kNear[static_cast<std::size_t>(floats.Next(0, 4.999F))];
}

TEST(KvMatrix44Test, RotationOrdersAreProductsOfElementaryRotationsAndCanBeReadBack)
{
    CSeededFloats floats;
    for (const auto& [order, axes] : kOrders) {
        for (int i = 0; i < 400; ++i) {
            CKvEulerAngles angles;
            for (int axis = 0; axis < 3; ++axis)
                angles[axis] = NextAngle(floats, i + axis / 2);
            const auto [a, b, c] = axes;
            const CKvMatrix44 expected = Elementary(c, angles[c])
                                             .MultiplyCorrect(Elementary(b, angles[b]))
                                             .MultiplyCorrect(Elementary(a, angles[a]));
            const CKvMatrix44 matrix = CKvMatrix44::makeRotation(angles, order);
            ASSERT_TRUE(IsNear(matrix, expected, 1e-6F)) << order;

            const CKvEulerAngles read = matrix.toEulerAngles(order);
            ASSERT_TRUE(IsNear(CKvMatrix44::makeRotation(read, order), matrix, 1e-6F))
                << order << ": " << angles.x << ' ' << angles.y << ' ' << angles.z;
        }
        // To the bit, since axes without an angle are skipped.
        EXPECT_EQ(CKvMatrix44::makeRotation({0, 0, 0.7F}, order), CKvMatrix44::makeRotationZ(0.7F));
    }
}

TEST(KvMatrix44Test, IncrementalRotationsAndTranslationsMultiplyOnTheLeft)
{
    constexpr std::array kRotate = {&CKvMatrix44::rotateX, &CKvMatrix44::rotateY,
                                    &CKvMatrix44::rotateZ};
    constexpr std::array kSet = {&CKvMatrix44::setRotationX, &CKvMatrix44::setRotationY,
                                 &CKvMatrix44::setRotationZ};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const CKvMatrix44 elementary = Elementary(static_cast<int>(axis), 0.3F);
        CKvMatrix44 matrix;
        (matrix.*kSet[axis])(0.3F);
        EXPECT_EQ(matrix, elementary);
        matrix = OneToSixteen();
        (matrix.*kRotate[axis])(0.3F);
        EXPECT_TRUE(IsNear(matrix, elementary.MultiplyCorrect(OneToSixteen()), 1e-5F)) << axis;
    }
    CKvMatrix44 moved = OneToSixteen();
    moved.translate(CKvVector3(1, 2, 3));
    EXPECT_EQ(moved, Translation(1, 2, 3).MultiplyCorrect(OneToSixteen()));
}

TEST(KvMatrix44Test, InverseTimesMatrixIsTheIdentityAtEveryScale)
{
    CSeededFloats floats;
    for (const float scale : {1e-9F, 1.0F, 1e9F}) {
        for (int i = 0; i < 200; ++i) {
            CKvMatrix44 matrix;
            for (float& element : matrix.elements)
                element = floats.Next(-scale, scale);
            for (int diagonal = 0; diagonal < 4; ++diagonal)
                matrix(diagonal, (diagonal + i) % 4) += 3 * scale;  // well-conditioned
            CKvMatrix44 inverse;
            ASSERT_TRUE(matrix.getInverseGeneric(inverse));
            ASSERT_TRUE(IsNear(inverse.MultiplyCorrect(matrix), CKvMatrix44(1), 2e-6F)) << scale;
            ASSERT_EQ(matrix.getInverseGeneric(), inverse);
        }
    }
}

TEST(KvMatrix44Test, DeterminantsAreSignedAndSingularMatricesHaveNoInverse)
{
    CKvMatrix44 matrix(1);
    matrix.elements = {0, 2, 0, 0, 3, 0, 0, 0, 0, 0, 0, 5, 7, 0, 4, 0};  // two swaps of columns: +
    EXPECT_EQ(matrix.GetDeterminant(), 2 * 3 * 5 * 4);

    CKvMatrix44 notANumber(1);
    notANumber(2, 1) = std::numeric_limits<float>::quiet_NaN();
    CKvMatrix44 tooSmall(1);
    tooSmall(0, 0) = 1e-40F;
    for (const CKvMatrix44& singular : {OneToSixteen(), notANumber, tooSmall}) {
        CKvMatrix44 inverse = Translation(1, 2, 3);
        EXPECT_FALSE(singular.getInverseGeneric(inverse));
        EXPECT_EQ(inverse, Translation(1, 2, 3));
        EXPECT_EQ(singular.getInverseGeneric(), CKvMatrix44(1));
    }
}

}  // namespace
