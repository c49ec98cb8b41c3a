// CKvVector2: two floats, a plain value of 8 bytes.

#pragma once

#include <cmath>
#include <type_traits>

#include "math/KvFloatVector.h"

/// Components stand in the documented order; all 0 unless given.
struct CKvVector2 : TKvFloatVector<CKvVector2>
{
    float x = 0.0F;
    float y = 0.0F;

    constexpr CKvVector2() = default;
    constexpr CKvVector2(float xIn, float yIn) : x(xIn), y(yIn) {}

    /// The component of this place; any index beyond gives the last one.
    constexpr float& operator[](int index) { return index == 0 ? x : y; }
    constexpr const float& operator[](int index) const { return index == 0 ? x : y; }

    constexpr bool operator==(const CKvVector2&) const = default;

    /// Turns counter-clockwise, X towards Y.
    ///
    /// Units: \a angle in radians.
    void Rotate(float angle)
    {
        const float c = std::cos(angle);
        const float s = std::sin(angle);
        *this = CKvVector2(c * x - s * y, s * x + c * y);
    }

    /// This vector turned by a quarter, counter-clockwise and clockwise.
    [[nodiscard]] constexpr CKvVector2 GetPerpendicularLeft() const { return {-y, x}; }
    [[nodiscard]] constexpr CKvVector2 GetPerpendicularRight() const { return {y, -x}; }

    /// Hooks of the component-wise arithmetic.
    template <typename Op>
    static constexpr CKvVector2 Combine(Op op, const auto&... values)
    {
        return {op(values.x...), op(values.y...)};
    }
    template <typename Op>
    [[nodiscard]] constexpr float Reduce(Op op) const
    {
        return op(x, y);
    }
};

static_assert(sizeof(CKvVector2) == 8 && std::is_trivially_copyable_v<CKvVector2> &&
              std::is_standard_layout_v<CKvVector2>);
