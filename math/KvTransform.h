// CKvTransform: where an object stands, how it is turned and how large it is, with the matrices
// made of this. A plain value.

#pragma once

#include <type_traits>

#include "math/KvEulerAngles.h"
#include "math/KvMatrix44.h"
#include "math/KvVector3.h"

/// Setters only store; the matrices follow at the next UpdateWorldTM(). Unless set: position and
/// angles 0, scale 1, unlocked, both matrices the identity.
class CKvTransform
{
public:
    [[nodiscard]] constexpr const CKvVector3& GetPosition() const { return m_position; }
    constexpr void SetPosition(const CKvVector3& position) { m_position = position; }

    /// Units: radians.
    [[nodiscard]] constexpr const CKvEulerAngles& GetRotation() const { return m_rotation; }
    constexpr void SetRotation(const CKvEulerAngles& rotation) { m_rotation = rotation; }

    [[nodiscard]] constexpr const CKvVector3& GetScale() const { return m_scale; }
    constexpr void SetScale(const CKvVector3& scale) { m_scale = scale; }

    /// Takes the angles that build the rotation of \a matrix, whose rows must be of one length.
    void SetRotation(const CKvMatrix44& matrix);

    /// The rotation that the last update made: Ry * Rz * Rx, the order ROTATION_XZY.
    [[nodiscard]] constexpr const CKvMatrix44& GetRotationMatrix() const
    {
        return m_rotationMatrix;
    }

    [[nodiscard]] constexpr const CKvMatrix44& GetWorldTM() const { return m_worldTM; }

    /// Sets the world matrix itself, locked or not. The lock keeps it from the next update.
    constexpr void SetWorldTM(const CKvMatrix44& worldTM) { m_worldTM = worldTM; }

    /// While the world matrix is locked, updates do nothing.
    constexpr void LockWorldTM() { m_isWorldTMLocked = true; }
    constexpr void UnlockWorldTM() { m_isWorldTMLocked = false; }
    [[nodiscard]] constexpr bool IsWorldTMLocked() const { return m_isWorldTMLocked; }

    /// Makes the rotation matrix of the angles, and the world matrix scale * rotation *
    /// translation.
    void UpdateWorldTM();

private:
    // In the documented order.
    CKvVector3 m_position;
    CKvEulerAngles m_rotation;
    CKvMatrix44 m_rotationMatrix = CKvMatrix44::makeIdentity();
    CKvVector3 m_scale = CKvVector3(1.0F, 1.0F, 1.0F);
    bool m_isWorldTMLocked = false;
    CKvMatrix44 m_worldTM = CKvMatrix44::makeIdentity();
};

static_assert(sizeof(CKvTransform) == 168 && std::is_trivially_copyable_v<CKvTransform> &&
              std::is_standard_layout_v<CKvTransform>);
