// CKvEulerAngles: three angles about the axes, a plain value of 12 bytes. The order in which they
// are applied is not part of the value; CKvMatrix44::ERotationOrder names it.

#pragma once

#include <type_traits>

#include "math/KvComponentWise.h"

/// Angles about the X, Y and Z axes in the documented order; all 0 unless given.
///
/// Units: radians.
struct CKvEulerAngles : TKvLinear<CKvEulerAngles, float>
{
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;

    constexpr CKvEulerAngles() = default;
    constexpr CKvEulerAngles(float xIn, float yIn, float zIn) : x(xIn), y(yIn), z(zIn) {}

    /// The angle about this axis; any index beyond gives the last one.
    constexpr float& operator[](int index) { return index == 0 ? x : index == 1 ? y : z; }
    constexpr const float& operator[](int index) const
    {
        return index == 0 ? x : index == 1 ? y : z;
    }

    constexpr bool operator==(const CKvEulerAngles&) const = default;

    /// Hook of the component-wise arithmetic.
    template <typename Op>
    static constexpr CKvEulerAngles Combine(Op op, const auto&... values)
    {
        return {op(values.x...), op(values.y...), op(values.z...)};
    }
};

static_assert(sizeof(CKvEulerAngles) == 12 && std::is_trivially_copyable_v<CKvEulerAngles> &&
              std::is_standard_layout_v<CKvEulerAngles>);
