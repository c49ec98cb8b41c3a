// CKvVector3: three floats, a plain value of 12 bytes.

#pragma once

/// Components stand in the documented order; all 0 unless given.
struct CKvVector3
{
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;

    constexpr CKvVector3() = default;
    constexpr CKvVector3(float xIn, float yIn, float zIn) : x(xIn), y(yIn), z(zIn) {}

    /// The component of this place; any index beyond gives the last one.
    constexpr float& operator[](int index) { return index == 0 ? x : index == 1 ? y : z; }
    constexpr const float& operator[](int index) const
    {
        return index == 0 ? x : index == 1 ? y : z;
    }

    constexpr bool operator==(const CKvVector3&) const = default;
};
