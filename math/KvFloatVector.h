// What the float vectors of two, three and four components have in common: lengths.

#pragma once

#include <cmath>

#include "math/KvComponentWise.h"

/// The base of CKvVector2, CKvVector3 and CKvVector4; holds nothing.
template <typename D>
struct TKvFloatVector : TKvComponentWise<D, float>
{
    [[nodiscard]] float GetLength() const { return std::sqrt(GetSquaredLength()); }
    [[nodiscard]] constexpr float GetSquaredLength() const
    {
        return this->DotProduct(this->Self());
    }

    /// The sum of the absolute components.
    [[nodiscard]] constexpr float GetLength1() const
    {
        using Math = TKvComponentMath<float>;
        return D::Combine(Math::Absolute, this->Self()).Reduce(Math::Add);
    }

    /// Scales to length 1.
    ///
    /// Errors: false when the length is not above 0; the vector stays as it is.
    bool Normalize()
    {
        const float length = GetLength();
        if (!(length > 0.0F))
            return false;
        this->Self() *= 1.0F / length;
        return true;
    }

    constexpr bool operator==(const TKvFloatVector&) const = default;
};
