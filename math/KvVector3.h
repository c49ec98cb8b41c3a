// CKvVector3: three floats, a plain value of 12 bytes.

#pragma once

#include <type_traits>

#include "math/KvFloatVector.h"
#include "math/KvPackedNormal.h"

/// Components stand in the documented order; all 0 unless given.
struct CKvVector3 : TKvFloatVector<CKvVector3>
{
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;

    constexpr CKvVector3() = default;
    constexpr CKvVector3(float xIn, float yIn, float zIn) : x(xIn), y(yIn), z(zIn) {}
    constexpr explicit CKvVector3(const CKvHENDN3* packed) { LoadHENDN3(packed); }

    /// The component of this place; any index beyond gives the last one.
    constexpr float& operator[](int index) { return index == 0 ? x : index == 1 ? y : z; }
    constexpr const float& operator[](int index) const
    {
        return index == 0 ? x : index == 1 ? y : z;
    }

    constexpr bool operator==(const CKvVector3&) const = default;

    /// A component test, not an ordering, and no sort key: false exactly when no component of
    /// \a other is above this vector's.
    constexpr bool operator<(const CKvVector3& other) const
    {
        return !(other.x <= x && other.y <= y && other.z <= z);
    }

    /// This x \a other: X x Y gives Z.
    [[nodiscard]] constexpr CKvVector3 CrossProduct(const CKvVector3& other) const
    {
        return {y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x};
    }
    constexpr CKvVector3 operator^(const CKvVector3& other) const { return CrossProduct(other); }

    /// Reads a packed normal; the result is as long as the fields make it, about 1.
    constexpr void LoadHENDN3(const CKvHENDN3* packed)
    {
        x = packed->GetX();
        y = packed->GetY();
        z = packed->GetZ();
    }

    /// Writes this vector as a packed normal: each component clamped to -1 .. 1 and rounded to the
    /// nearest step, ties to even; one that is not a number counts as 0.
    constexpr void StoreHENDN3(CKvHENDN3* packed) const { packed->Set(x, y, z); }

    /// Hooks of the component-wise arithmetic.
    template <typename Op>
    static constexpr CKvVector3 Combine(Op op, const auto&... values)
    {
        return {op(values.x...), op(values.y...), op(values.z...)};
    }
    template <typename Op>
    [[nodiscard]] constexpr float Reduce(Op op) const
    {
        return op(op(x, y), z);
    }
};

static_assert(sizeof(CKvVector3) == 12 && std::is_trivially_copyable_v<CKvVector3> &&
              std::is_standard_layout_v<CKvVector3>);
