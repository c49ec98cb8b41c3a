// The rotations of CKvMatrix44: about one axis, by three angles, and back to angles.

#include <array>
#include <cmath>

#include "math/KvMatrix44.h"

namespace {

enum EAxis : int
{
    AXIS_X,
    AXIS_Y,
    AXIS_Z,
};

/// The axes of each rotation order, as they are built.
using CAxes = std::array<EAxis, 3>;
constexpr std::array<CAxes, 6> kOrders = {{{AXIS_X, AXIS_Y, AXIS_Z},
                                           {AXIS_X, AXIS_Z, AXIS_Y},
                                           {AXIS_Y, AXIS_X, AXIS_Z},
                                           {AXIS_Y, AXIS_Z, AXIS_X},
                                           {AXIS_Z, AXIS_X, AXIS_Y},
                                           {AXIS_Z, AXIS_Y, AXIS_X}}};

/// The axes of an order, null for a value that is none.
const CAxes* FindAxes(CKvMatrix44::ERotationOrder order)
{
    const auto index = static_cast<std::size_t>(order);
    return index < kOrders.size() ? &kOrders[index] : nullptr;
}

/// A rotation about an axis turns the next axis towards the one after it.
constexpr int Next(int axis)
{
    return (axis + 1) % 3;
}

void SetRotation(CKvMatrix44& matrix, EAxis axis, float angle)
{
    const int i = Next(axis);
    const int j = Next(i);
    const float c = std::cos(angle);
    const float s = std::sin(angle);
    matrix.setIdentity();
    matrix(i, i) = c;
    matrix(i, j) = s;
    matrix(j, i) = -s;
    matrix(j, j) = c;
}

void Rotate(CKvMatrix44& matrix, EAxis axis, float angle)
{
    const int i = Next(axis);
    const int j = Next(i);
    const float c = std::cos(angle);
    const float s = std::sin(angle);
    for (int column = 0; column < 4; ++column) {
        const float first = matrix(i, column);
        const float second = matrix(j, column);
        matrix(i, column) = c * first + s * second;
        matrix(j, column) = c * second - s * first;
    }
}

}  // namespace

void CKvMatrix44::setRotationX(float angle)
{
    SetRotation(*this, AXIS_X, angle);
}

void CKvMatrix44::setRotationY(float angle)
{
    SetRotation(*this, AXIS_Y, angle);
}

void CKvMatrix44::setRotationZ(float angle)
{
    SetRotation(*this, AXIS_Z, angle);
}

CKvMatrix44 CKvMatrix44::makeRotationZ(float angle)
{
    CKvMatrix44 matrix;
    matrix.setRotationZ(angle);
    return matrix;
}

void CKvMatrix44::rotateX(float angle)
{
    Rotate(*this, AXIS_X, angle);
}

void CKvMatrix44::rotateY(float angle)
{
    Rotate(*this, AXIS_Y, angle);
}

void CKvMatrix44::rotateZ(float angle)
{
    Rotate(*this, AXIS_Z, angle);
}

void CKvMatrix44::setRotation(float x, float y, float z, ERotationOrder order)
{
    const CAxes* axes = FindAxes(order);
    if (axes == nullptr)
        return;
    const CKvEulerAngles angles(x, y, z);
    const auto [first, second, third] = *axes;
    if (angles[first] != 0.0F)
        SetRotation(*this, first, angles[first]);
    else
        setIdentity();
    if (angles[second] != 0.0F)
        Rotate(*this, second, angles[second]);
    if (angles[third] != 0.0F)
        Rotate(*this, third, angles[third]);
}

CKvMatrix44 CKvMatrix44::makeRotation(const CKvEulerAngles& angles, ERotationOrder order)
{
    CKvMatrix44 matrix(1);
    matrix.setRotation(angles.x, angles.y, angles.z, order);
    return matrix;
}

// After M. Day, "Extracting Euler Angles from a Rotation Matrix" (2012), for all orders at once:
// the last angle is read off first, and the first angle off what remains when it is undone. Where
// two axes fall together the last angle is arbitrary, and the first one still fits to it.
//
// With the axes a, b, c and sign 1 for XYZ, YZX, ZXY, else -1, the rotation Rc * Rb * Ra has
//   (a, a) = cos b cos c, (b, a) = -sign cos b sin c, (c, a) = sign sin b,
// and its row b, with Rc undone, has cos a in column b and sign sin a in column c.
CKvEulerAngles CKvMatrix44::toEulerAngles(ERotationOrder order) const
{
    CKvEulerAngles angles;
    const CAxes* axes = FindAxes(order);
    if (axes == nullptr)
        return angles;
    const CKvMatrix44& m = *this;
    const auto [a, b, c] = *axes;
    const float sign = b == Next(a) ? 1.0F : -1.0F;

    angles[c] = std::atan2(-sign * m(b, a), m(a, a));
    angles[b] = std::atan2(sign * m(c, a), std::hypot(m(a, a), m(b, a)));
    const float cosC = std::cos(angles[c]);
    const float sinC = sign * std::sin(angles[c]);
    angles[a] =
        std::atan2(sign * (cosC * m(b, c) + sinC * m(a, c)), cosC * m(b, b) + sinC * m(a, b));
    return angles;
}
