// CKvQuaternion: a rotation as four floats, a plain value of 16 bytes.

#pragma once

#include "math/KvVector3.h"

/// Components stand in the documented order; w is the scalar part.
struct CKvQuaternion
{
    float x;
    float y;
    float z;
    float w;

    constexpr CKvQuaternion(float xIn, float yIn, float zIn, float wIn)
        : x(xIn), y(yIn), z(zIn), w(wIn)
    {
    }

    /// Takes the components as they are: no conversion from axis and angle.
    constexpr CKvQuaternion(const CKvVector3& vector, float scalar)
        : x(vector.x), y(vector.y), z(vector.z), w(scalar)
    {
    }

    /// The identity (0, 0, 0, 1), or for 0 a value that must be assigned before it is read.
    constexpr explicit CKvQuaternion(int isIdentity)
    {
        if (isIdentity == 0)
            return;
        x = y = z = 0.0F;
        w = 1.0F;
    }

    /// The component of this place; any index beyond gives w.
    constexpr float& operator[](int index)
    {
        return index == 0 ? x : index == 1 ? y : index == 2 ? z : w;
    }
    constexpr const float& operator[](int index) const
    {
        return index == 0 ? x : index == 1 ? y : index == 2 ? z : w;
    }

    constexpr bool operator==(const CKvQuaternion&) const = default;
};
