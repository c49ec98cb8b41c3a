#include "math/KvTransform.h"

namespace {

constexpr CKvMatrix44::ERotationOrder kOrder = CKvMatrix44::ROTATION_XZY;

}  // namespace

void CKvTransform::SetRotation(const CKvMatrix44& matrix)
{
    m_rotation = matrix.toEulerAngles(kOrder);
}

void CKvTransform::UpdateWorldTM()
{
    if (m_isWorldTMLocked)
        return;
    m_rotationMatrix = CKvMatrix44::makeRotation(m_rotation, kOrder);

    CKvMatrix44 scale(1);
    scale(0, 0) = m_scale.x;
    scale(1, 1) = m_scale.y;
    scale(2, 2) = m_scale.z;
    m_worldTM = scale.MultiplyCorrectWhenDiagonalAndSetPosition(m_rotationMatrix, m_position);
}
