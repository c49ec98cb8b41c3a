// CKvVector4: four floats, a plain value of 16 bytes.

#pragma once

/// Components stand in the documented order; all 0 unless given.
struct CKvVector4
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
};
