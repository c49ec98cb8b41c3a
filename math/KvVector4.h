// CKvVector4: four floats, a plain value of 16 bytes.

#pragma once

#include <type_traits>

#include "math/KvFloatVector.h"
#include "math/KvVector3.h"

/// Components stand in the documented order; all 0 unless given.
struct CKvVector4 : TKvFloatVector<CKvVector4>
{
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;
    float w = 0.0F;

    constexpr CKvVector4() = default;
    constexpr CKvVector4(float xIn, float yIn, float zIn, float wIn)
        : x(xIn), y(yIn), z(zIn), w(wIn)
    {
    }
    /// With w 1 a point, with w 0 a direction.
    constexpr CKvVector4(const CKvVector3& vector, float wIn)
        : x(vector.x), y(vector.y), z(vector.z), w(wIn)
    {
    }

    /// The component of this place; any index beyond gives the last one.
    constexpr float& operator[](int index)
    {
        return index == 0 ? x : index == 1 ? y : index == 2 ? z : w;
    }
    constexpr const float& operator[](int index) const
    {
        return index == 0 ? x : index == 1 ? y : index == 2 ? z : w;
    }

    constexpr bool operator==(const CKvVector4&) const = default;

    /// Hooks of the component-wise arithmetic.
    template <typename Op>
    static constexpr CKvVector4 Combine(Op op, const auto&... values)
    {
        return {op(values.x...), op(values.y...), op(values.z...), op(values.w...)};
    }
    template <typename Op>
    [[nodiscard]] constexpr float Reduce(Op op) const
    {
        return op(op(op(x, y), z), w);
    }
};

static_assert(sizeof(CKvVector4) == 16 && std::is_trivially_copyable_v<CKvVector4> &&
              std::is_standard_layout_v<CKvVector4>);
