// CKvVector2i: two ints, a plain value of 8 bytes.

#pragma once

#include <type_traits>

#include "math/KvComponentWise.h"

/// Components stand in the documented order; all 0 unless given. Arithmetic wraps around, and
/// division by 0 gives 0.
struct CKvVector2i : TKvComponentWise<CKvVector2i, int>
{
    int x = 0;
    int y = 0;

    constexpr CKvVector2i() = default;
    constexpr CKvVector2i(int xIn, int yIn) : x(xIn), y(yIn) {}

    /// The component of this place; any index beyond gives the last one.
    constexpr int& operator[](int index) { return index == 0 ? x : y; }
    constexpr const int& operator[](int index) const { return index == 0 ? x : y; }

    constexpr bool operator==(const CKvVector2i&) const = default;

    /// Hooks of the component-wise arithmetic.
    template <typename Op>
    static constexpr CKvVector2i Combine(Op op, const auto&... values)
    {
        return {op(values.x...), op(values.y...)};
    }
    template <typename Op>
    [[nodiscard]] constexpr int Reduce(Op op) const
    {
        return op(x, y);
    }
};

static_assert(sizeof(CKvVector2i) == 8 && std::is_trivially_copyable_v<CKvVector2i> &&
              std::is_standard_layout_v<CKvVector2i>);
