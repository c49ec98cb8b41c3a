// CKvQuaternion: a rotation as four floats, a plain value of 16 bytes.
//
// The product is Hamilton's, i * j = k. A unit quaternion q rotates v to q v q*, so q1 * q2 applies
// q2 first: the opposite reading to matrices, where v * (A * B) applies A first.

#pragma once

#include <type_traits>

#include "math/KvAngleAxis.h"
#include "math/KvComponentWise.h"
#include "math/KvPackedQuaternion.h"
#include "math/KvVector3.h"

/// Components stand in the documented order; w is the scalar part. There is no default constructor.
struct CKvQuaternion : TKvLinear<CKvQuaternion, float>
{
    float x;
    float y;
    float z;
    float w;

    constexpr CKvQuaternion(float xIn, float yIn, float zIn, float wIn)
        : x(xIn), y(yIn), z(zIn), w(wIn)
    {
    }

    /// Takes the components as they are: no conversion from axis and angle.
    constexpr CKvQuaternion(const CKvVector3& vector, float scalar)
        : x(vector.x), y(vector.y), z(vector.z), w(scalar)
    {
    }

    /// The identity (0, 0, 0, 1), or for 0 a value that must be assigned before it is read.
    constexpr explicit CKvQuaternion(int isIdentity)
    {
        if (isIdentity != 0)
            identity();
    }

    /// The rotation by \a rotation.angle about \a rotation.axis.
    static CKvQuaternion makeRotation(const CKvAngleAxis& rotation);

    /// Loads the packed quaternion and normalises it; the word 0 gives the identity.
    CKvQuaternion& operator=(const CKvPackedQuaternion& packed);

    /// Packs this quaternion, which must be of length 1: loading gives it back within the packing's
    /// steps.
    constexpr void StorePacked(CKvPackedQuaternion* packed) const
    {
        packed->Set(x, y, z, w < 0.0F);
    }

    /// Hook of the component-wise arithmetic; it stands before the members that use it, since some
    /// compilers read the bodies in this order.
    template <typename Op>
    static constexpr CKvQuaternion Combine(Op op, const auto&... values)
    {
        return {op(values.x...), op(values.y...), op(values.z...), op(values.w...)};
    }

    /// The component of this place; any index beyond gives w.
    constexpr float& operator[](int index)
    {
        return index == 0 ? x : index == 1 ? y : index == 2 ? z : w;
    }
    constexpr const float& operator[](int index) const
    {
        return index == 0 ? x : index == 1 ? y : index == 2 ? z : w;
    }

    constexpr bool operator==(const CKvQuaternion&) const = default;

    /// The Hamilton product this * \a other.
    constexpr CKvQuaternion operator*(const CKvQuaternion& other) const
    {
        return {w * other.x + x * other.w + y * other.z - z * other.y,
                w * other.y + y * other.w + z * other.x - x * other.z,
                w * other.z + z * other.w + x * other.y - y * other.x,
                w * other.w - x * other.x - y * other.y - z * other.z};
    }
    constexpr CKvQuaternion& operator*=(const CKvQuaternion& other)
    {
        return *this = *this * other;
    }

    /// Becomes (0, 0, 0, 1).
    constexpr void identity() { *this = CKvQuaternion(0.0F, 0.0F, 0.0F, 1.0F); }

    /// Whether each component is within \a tolerance of (0, 0, 0, 1). (0, 0, 0, -1) turns nothing
    /// either, but is another value.
    [[nodiscard]] constexpr bool isIdentity(float tolerance) const
    {
        return Equal(CKvQuaternion(0.0F, 0.0F, 0.0F, 1.0F), tolerance);
    }

    /// Whether no component differs from that of \a other by more than \a tolerance.
    [[nodiscard]] constexpr bool Equal(const CKvQuaternion& other, float tolerance) const
    {
        const CKvQuaternion apart = Combine(Math::Absolute, *this - other);
        return apart.x <= tolerance && apart.y <= tolerance && apart.z <= tolerance &&
               apart.w <= tolerance;
    }

    [[nodiscard]] float getLength() const;
    [[nodiscard]] constexpr float getSquaredLength() const { return x * x + y * y + z * z + w * w; }

    /// Scales to length 1.
    ///
    /// Errors: false when the length is not above 0; the quaternion is then the identity.
    bool normalize();

    /// As normalize(), for a quaternion known not to be 0: nothing is tested, and 0 would become
    /// NaN.
    void normalizeFast();

    /// The conjugate (-x, -y, -z, w): of a unit quaternion, the rotation back.
    [[nodiscard]] constexpr CKvQuaternion getConjugate() const { return {-x, -y, -z, w}; }
    constexpr void conjugate() { *this = getConjugate(); }

    /// The quaternion whose product with this one is the identity, whatever the length.
    ///
    /// Errors: Invert() gives false when the squared length is not above 0; as after
    ///         normalize(), the result is then the identity.
    [[nodiscard]] constexpr CKvQuaternion GetInverse() const
    {
        CKvQuaternion inverse = *this;
        inverse.Invert();
        return inverse;
    }
    constexpr bool Invert()
    {
        const float squaredLength = getSquaredLength();
        if (!(squaredLength > 0.0F)) {
            identity();
            return false;
        }
        *this = getConjugate() / squaredLength;
        return true;
    }

    /// Of the two quaternions q and -q, which are the same rotation, becomes the one closer to
    /// \a other: interpolating between the two then takes the short way.
    constexpr void makeClosest(const CKvQuaternion& other)
    {
        if (x * other.x + y * other.y + z * other.z + w * other.w < 0.0F)
            *this = -*this;
    }

    /// \a vector turned by this quaternion, which must be of length 1.
    ///
    /// q v q* with the products written out: v + 2w (u x v) + 2 u x (u x v), where u = (x, y, z).
    [[nodiscard]] constexpr CKvVector3 Rotate(const CKvVector3& vector) const
    {
        const CKvVector3 u(x, y, z);
        const CKvVector3 twice = u.CrossProduct(vector) * 2.0F;
        return vector + twice * w + u.CrossProduct(twice);
    }
};

static_assert(sizeof(CKvQuaternion) == 16 && std::is_trivially_copyable_v<CKvQuaternion> &&
              std::is_standard_layout_v<CKvQuaternion>);
