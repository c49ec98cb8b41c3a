#include "math/KvQuaternion.h"

#include <cmath>

CKvQuaternion CKvQuaternion::makeRotation(const CKvAngleAxis& rotation)
{
    const float half = rotation.angle * 0.5F;
    return {rotation.axis * std::sin(half), std::cos(half)};
}

CKvQuaternion& CKvQuaternion::operator=(const CKvPackedQuaternion& packed)
{
    x = packed.GetX();
    y = packed.GetY();
    z = packed.GetZ();
    const float radicand = 1.0F - (x * x + y * y + z * z);
    w = radicand > 0.0F ? std::sqrt(radicand) : 0.0F;
    if (packed.IsWNegative())
        w = -w;
    normalize();
    return *this;
}

float CKvQuaternion::getLength() const
{
    return std::sqrt(getSquaredLength());
}

bool CKvQuaternion::normalize()
{
    const float length = getLength();
    if (!(length > 0.0F)) {
        identity();
        return false;
    }
    *this *= 1.0F / length;
    return true;
}

void CKvQuaternion::normalizeFast()
{
    *this *= 1.0F / getLength();
}
