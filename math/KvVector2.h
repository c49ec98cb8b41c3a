// CKvVector2: two floats, a plain value of 8 bytes.

#pragma once

/// Components stand in the documented order; all 0 unless given.
struct CKvVector2
{
    float x = 0.0F;
    float y = 0.0F;

    constexpr CKvVector2() = default;
    constexpr CKvVector2(float xIn, float yIn) : x(xIn), y(yIn) {}

    /// The component of this place; any index beyond gives the last one.
    constexpr float& operator[](int index) { return index == 0 ? x : y; }
    constexpr const float& operator[](int index) const { return index == 0 ? x : y; }

    constexpr bool operator==(const CKvVector2&) const = default;
};
