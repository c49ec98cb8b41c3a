// The camera of CKvMatrix44: view matrices and projections. Right-handed space is left-handed space
// with Z turned round, so each right-handed matrix is made of the left-handed one.

#include <cmath>

#include "math/KvMatrix44.h"

namespace {

/// The sine of the smallest angle between the view and the up direction.
constexpr float kLeastUpSine = 1e-6F;

/// The view matrix of a camera at \a eye; \a zAxis and \a up are of any length.
bool SetView(CKvMatrix44& matrix, const CKvVector3& eye, CKvVector3 zAxis, CKvVector3 up)
{
    if (!zAxis.Normalize() || !up.Normalize())
        return false;
    CKvVector3 xAxis = up ^ zAxis;
    if (!(xAxis.GetLength() > kLeastUpSine))
        return false;
    xAxis.Normalize();
    const CKvVector3 yAxis = zAxis ^ xAxis;

    matrix.setIdentity();
    for (int row = 0; row < 3; ++row) {
        matrix(row, 0) = xAxis[row];
        matrix(row, 1) = yAxis[row];
        matrix(row, 2) = zAxis[row];
    }
    matrix.setTranslationOnly(-matrix.TransformDirection(eye));
    return true;
}

/// Turns a projection of left-handed space into that of right-handed space: z comes in negative.
void NegateDepth(CKvMatrix44& projection)
{
    for (int column = 0; column < 4; ++column)
        projection(2, column) = 0.0F - projection(2, column);
}

/// A perspective projection around the axis of view.
void SetPerspective(CKvMatrix44& matrix, float xScale, float yScale, float nearZ, float farZ)
{
    matrix.elements = {};
    matrix(0, 0) = xScale;
    matrix(1, 1) = yScale;
    matrix(2, 2) = farZ / (farZ - nearZ);
    matrix(2, 3) = 1.0F;
    matrix(3, 2) = nearZ * farZ / (nearZ - farZ);
}

}  // namespace

bool CKvMatrix44::setLookAtLH(const CKvVector3& eye, const CKvVector3& target, const CKvVector3& up)
{
    return SetView(*this, eye, target - eye, up);
}

bool CKvMatrix44::setLookAtRH(const CKvVector3& eye, const CKvVector3& target, const CKvVector3& up)
{
    return SetView(*this, eye, eye - target, up);
}

void CKvMatrix44::setPerpectiveFovLH(float fovY, float aspect, float nearZ, float farZ)
{
    const float yScale = 1.0F / std::tan(fovY * 0.5F);
    SetPerspective(*this, yScale / aspect, yScale, nearZ, farZ);
}

void CKvMatrix44::setPerpectiveFovRH(float fovY, float aspect, float nearZ, float farZ)
{
    setPerpectiveFovLH(fovY, aspect, nearZ, farZ);
    NegateDepth(*this);
}

void CKvMatrix44::setPerpectiveOffCenterLH(float left, float right, float bottom, float top,
                                           float nearZ, float farZ)
{
    SetPerspective(*this, 2.0F * nearZ / (right - left), 2.0F * nearZ / (top - bottom), nearZ,
                   farZ);
    (*this)(2, 0) = (left + right) / (left - right);
    (*this)(2, 1) = (top + bottom) / (bottom - top);
}

void CKvMatrix44::setPerpectiveOffCenterRH(float left, float right, float bottom, float top,
                                           float nearZ, float farZ)
{
    setPerpectiveOffCenterLH(left, right, bottom, top, nearZ, farZ);
    NegateDepth(*this);
}

void CKvMatrix44::setOrthographicLH(float width, float height, float nearZ, float farZ)
{
    setIdentity();
    (*this)(0, 0) = 2.0F / width;
    (*this)(1, 1) = 2.0F / height;
    (*this)(2, 2) = 1.0F / (farZ - nearZ);
    (*this)(3, 2) = nearZ / (nearZ - farZ);
}

void CKvMatrix44::setOrthographicRH(float width, float height, float nearZ, float farZ)
{
    setOrthographicLH(width, height, nearZ, farZ);
    NegateDepth(*this);
}

void CKvMatrix44::setOrthographicOffCenterLH(float left, float right, float bottom, float top,
                                             float nearZ, float farZ)
{
    setOrthographicLH(right - left, top - bottom, nearZ, farZ);
    (*this)(3, 0) = (left + right) / (left - right);
    (*this)(3, 1) = (top + bottom) / (bottom - top);
}

void CKvMatrix44::setOrthographicOffCenterRH(float left, float right, float bottom, float top,
                                             float nearZ, float farZ)
{
    setOrthographicOffCenterLH(left, right, bottom, top, nearZ, farZ);
    NegateDepth(*this);
}
