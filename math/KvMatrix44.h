// CKvMatrix44: 16 floats row by row, a plain value of 64 bytes.
//
// Points and directions are row vectors multiplied on the left, v' = v * M; v * (A * B) applies A
// first. Row 0 is the right axis (X), row 1 the front axis (Y), row 2 the up axis (Z), row 3 the
// translation; column 3 of an affine matrix is (0, 0, 0, 1). Angles are radians, and a positive one
// about Z turns X towards Y. Sines and cosines are the C library's in single precision.
//
// View space is the camera's: X right, Y up, and what is in front lies towards +Z in left-handed
// (LH) and towards -Z in right-handed (RH) space. Projections map the near plane to depth 0 and the
// far plane to depth 1.

#pragma once

#include <type_traits>

#include "math/KvEulerAngles.h"
#include "math/KvQuaternion.h"
#include "math/KvSquareMatrix.h"
#include "math/KvVector3.h"
#include "math/KvVector4.h"

struct CKvMatrix44 : TKvSquareMatrix<4>
{
    /// The axes in the order in which a rotation is built. Each further axis multiplies on the
    /// left, so a row vector meets the last one first: ROTATION_XYZ is Rz * Ry * Rx.
    enum ERotationOrder : int
    {
        ROTATION_XYZ = 0,
        ROTATION_XZY = 1,
        ROTATION_YXZ = 2,
        ROTATION_YZX = 3,
        ROTATION_ZXY = 4,
        ROTATION_ZYX = 5,
    };

    using TKvSquareMatrix::TKvSquareMatrix;

    constexpr bool operator==(const CKvMatrix44&) const = default;

    static constexpr CKvMatrix44 makeIdentity() { return CKvMatrix44(1); }

    [[nodiscard]] constexpr CKvVector3 getRight() const { return GetRow(0); }
    [[nodiscard]] constexpr CKvVector3 getFront() const { return GetRow(1); }
    [[nodiscard]] constexpr CKvVector3 getUp() const { return GetRow(2); }
    [[nodiscard]] constexpr CKvVector3 getTranslation() const { return GetRow(3); }

    /// Becomes the translation by \a offset.
    constexpr void setTranslation(const CKvVector3& offset)
    {
        setIdentity();
        setTranslationOnly(offset);
    }

    /// Sets the first three elements of row 3; all others stay.
    constexpr void setTranslationOnly(const CKvVector3& offset)
    {
        elements[12] = offset.x;
        elements[13] = offset.y;
        elements[14] = offset.z;
    }

    /// Becomes T * M, with T the translation by \a offset: as the rotations below, it acts on a
    /// vector before what the matrix did so far.
    constexpr void translate(const CKvVector3& offset)
    {
        for (std::size_t c = 0; c < 4; ++c)
            elements[12 + c] +=
                offset.x * elements[c] + offset.y * elements[4 + c] + offset.z * elements[8 + c];
    }

    /// Becomes the rotation about one axis.
    void setRotationX(float angle);
    void setRotationY(float angle);
    void setRotationZ(float angle);
    static CKvMatrix44 makeRotationZ(float angle);

    /// Becomes R * M, with R the rotation about one axis: a rotation in the local frame.
    void rotateX(float angle);
    void rotateY(float angle);
    void rotateZ(float angle);

    /// Becomes the rotation by the three angles. Axes whose angle is exactly 0 are skipped.
    ///
    /// Errors: an unknown \a order leaves the matrix as it is; makeRotation() then gives the
    /// identity.
    void setRotation(float x, float y, float z, ERotationOrder order);
    static CKvMatrix44 makeRotation(const CKvEulerAngles& angles, ERotationOrder order);

    /// Becomes the rotation by \a quaternion, of any length but 0, which gives the identity. With
    /// \a isTransposed 0 the block is the one for column vectors, with any other value its
    /// transpose, which turns row vectors as the quaternion does.
    constexpr void setRotation(const CKvQuaternion& quaternion, int isTransposed);

    /// Angles from which setRotation() with the same order builds this rotation again, also where
    /// two axes fall together and only the sum or difference of their angles counts. The middle
    /// angle is from -pi / 2 to pi / 2, the others from -pi to pi. The upper 3 x 3 block must be a
    /// rotation, as a whole scaled or not.
    ///
    /// Errors: an unknown \a order gives (0, 0, 0).
    [[nodiscard]] CKvEulerAngles toEulerAngles(ERotationOrder order) const;

    /// This * \a other.
    [[nodiscard]] constexpr CKvMatrix44 MultiplyCorrect(const CKvMatrix44& other) const;

    /// \a other * this: the same product with the operands exchanged.
    [[nodiscard]] constexpr CKvMatrix44 MultiplyBugged(const CKvMatrix44& other) const
    {
        return other.MultiplyCorrect(*this);
    }

    /// Of this matrix only the first three diagonal elements count: rows 0 to 2 of the result are
    /// those of \a other times these, row 3 is (\a position, 1).
    [[nodiscard]] constexpr CKvMatrix44 MultiplyCorrectWhenDiagonalAndSetPosition(
        const CKvMatrix44& other, const CKvVector3& position) const;

    /// \a point * this with w = 1, and no division by the w of the result.
    [[nodiscard]] constexpr CKvVector3 TransformPoint(const CKvVector3& point) const
    {
        return TransformDirection(point) + getTranslation();
    }

    /// \a direction * this with w = 0: the translation does not count.
    [[nodiscard]] constexpr CKvVector3 TransformDirection(const CKvVector3& direction) const
    {
        return direction.x * getRight() + direction.y * getFront() + direction.z * getUp();
    }

    [[nodiscard]] constexpr CKvMatrix44 getTranspose() const;

    /// Computed in double precision and rounded once; infinite when beyond a float.
    [[nodiscard]] float GetDeterminant() const;

    /// The inverse of any matrix, by cofactors in double precision.
    ///
    /// Errors: there is no inverse when the determinant cannot be told from 0 in that precision, or
    ///         when an element of the inverse is not finite. The first form then gives false and
    ///         leaves \a inverse as it is, the second gives the identity.
    [[nodiscard]] bool getInverseGeneric(CKvMatrix44& inverse) const;
    [[nodiscard]] CKvMatrix44 getInverseGeneric() const;

    /// Becomes the view matrix of a camera at \a eye that looks at \a target, with \a up (of any
    /// length) upwards in the picture.
    ///
    /// Errors: false, and the matrix as it is, when eye and target are the same point or the
    ///         view goes along \a up.
    bool setLookAtLH(const CKvVector3& eye, const CKvVector3& target, const CKvVector3& up);
    bool setLookAtRH(const CKvVector3& eye, const CKvVector3& target, const CKvVector3& up);

    /// Becomes a perspective projection. \a nearZ and \a farZ are distances, different and above 0.
    /// \a aspect is width by height.
    ///
    /// Units: \a fovY, the full vertical angle of view, in radians, between 0 and pi.
    void setPerpectiveFovLH(float fovY, float aspect, float nearZ, float farZ);
    void setPerpectiveFovRH(float fovY, float aspect, float nearZ, float farZ);

    /// The same with the edges of the picture on the near plane.
    void setPerpectiveOffCenterLH(float left, float right, float bottom, float top, float nearZ,
                                  float farZ);
    void setPerpectiveOffCenterRH(float left, float right, float bottom, float top, float nearZ,
                                  float farZ);

    /// Becomes a parallel projection of a box around the axis of view. \a width and \a height are
    /// not 0; \a nearZ and \a farZ are different distances, of any sign.
    void setOrthographicLH(float width, float height, float nearZ, float farZ);
    void setOrthographicRH(float width, float height, float nearZ, float farZ);

    /// The same with the edges of the box.
    void setOrthographicOffCenterLH(float left, float right, float bottom, float top, float nearZ,
                                    float farZ);
    void setOrthographicOffCenterRH(float left, float right, float bottom, float top, float nearZ,
                                    float farZ);

private:
    [[nodiscard]] constexpr CKvVector3 GetRow(std::size_t row) const
    {
        return {elements[4 * row], elements[4 * row + 1], elements[4 * row + 2]};
    }
};

static_assert(sizeof(CKvMatrix44) == 64 && std::is_trivial_v<CKvMatrix44> &&
              std::is_standard_layout_v<CKvMatrix44>);

/// The row vector times the matrix.
constexpr CKvVector4 operator*(const CKvVector4& vector, const CKvMatrix44& matrix)
{
    CKvVector4 result;
    for (int c = 0; c < 4; ++c)
        result[c] = vector.x * matrix(0, c) + vector.y * matrix(1, c) + vector.z * matrix(2, c) +
                    vector.w * matrix(3, c);
    return result;
}

// ---------------------------------------------------------------------------------------------------

constexpr void CKvMatrix44::setRotation(const CKvQuaternion& quaternion, int isTransposed)
{
    const auto [x, y, z, w] = quaternion;
    const float squaredLength = quaternion.getSquaredLength();
    const float s = squaredLength == 0.0F ? 1.0F : 2.0F / squaredLength;
    elements = {1.0F - s * (y * y + z * z),
                s * (x * y - w * z),
                s * (x * z + w * y),
                0.0F,
                s * (x * y + w * z),
                1.0F - s * (x * x + z * z),
                s * (y * z - w * x),
                0.0F,
                s * (x * z - w * y),
                s * (y * z + w * x),
                1.0F - s * (x * x + y * y),
                0.0F,
                0.0F,
                0.0F,
                0.0F,
                1.0F};
    if (isTransposed != 0)
        *this = getTranspose();
}

constexpr CKvMatrix44 CKvMatrix44::MultiplyCorrect(const CKvMatrix44& other) const
{
    // A row of the result is a sum of rows of the other matrix, which compilers do four at a time.
    CKvMatrix44 product;
    for (std::size_t row = 0; row < 16; row += 4) {
        for (std::size_t c = 0; c < 4; ++c)
            product.elements[row + c] = elements[row] * other.elements[c] +
                                        elements[row + 1] * other.elements[4 + c] +
                                        elements[row + 2] * other.elements[8 + c] +
                                        elements[row + 3] * other.elements[12 + c];
    }
    return product;
}

constexpr CKvMatrix44 CKvMatrix44::MultiplyCorrectWhenDiagonalAndSetPosition(
    const CKvMatrix44& other, const CKvVector3& position) const
{
    CKvMatrix44 product;
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t c = 0; c < 4; ++c)
            product.elements[4 * row + c] = elements[5 * row] * other.elements[4 * row + c];
    }
    product.setTranslationOnly(position);
    product.elements[15] = 1.0F;
    return product;
}

constexpr CKvMatrix44 CKvMatrix44::getTranspose() const
{
    CKvMatrix44 transpose;
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t c = 0; c < 4; ++c)
            transpose.elements[4 * c + row] = elements[4 * row + c];
    }
    return transpose;
}
