// CKvAngleAxis: a rotation as an axis and an angle about it, a plain value of 16 bytes.

#pragma once

#include <type_traits>

#include "math/KvVector3.h"

/// Fields stand in the documented order. A positive angle about Z turns X towards Y. Unless given,
/// no rotation about the up axis.
///
/// Units: \a angle in radians; \a axis of length 1.
struct CKvAngleAxis
{
    CKvVector3 axis = CKvVector3(0.0F, 0.0F, 1.0F);
    float angle = 0.0F;

    constexpr CKvAngleAxis() = default;
    constexpr CKvAngleAxis(const CKvVector3& axisIn, float angleIn) : axis(axisIn), angle(angleIn)
    {
    }

    /// Sets the axis to (\a x, \a y, \a z) and the angle to \a a.
    constexpr void SetXYZA(float x, float y, float z, float a)
    {
        axis = CKvVector3(x, y, z);
        angle = a;
    }

    constexpr bool operator==(const CKvAngleAxis&) const = default;
};

static_assert(sizeof(CKvAngleAxis) == 16 && std::is_trivially_copyable_v<CKvAngleAxis> &&
              std::is_standard_layout_v<CKvAngleAxis>);
