// CKvPackedQuaternion: a unit quaternion in one 32-bit word. CKvQuaternion loads and stores it.

#pragma once

#include <cstdint>
#include <type_traits>

#include "math/KvPackedFields.h"

/// x in bits 0 to 9, y in bits 10 to 19, z in bits 20 to 29, each two's complement with 1 as 511
/// steps; w is negative when either of the bits 30 and 31 is set, and its size follows from
/// length 1. A default-constructed one must be assigned before it is read.
struct CKvPackedQuaternion
{
    std::uint32_t word;

    CKvPackedQuaternion() = default;
    constexpr explicit CKvPackedQuaternion(std::uint32_t wordIn) : word(wordIn) {}

    [[nodiscard]] constexpr float GetX() const { return Component(0); }
    [[nodiscard]] constexpr float GetY() const { return Component(kBits); }
    [[nodiscard]] constexpr float GetZ() const { return Component(2 * kBits); }
    [[nodiscard]] constexpr bool IsWNegative() const { return (word & kSignBits) != 0; }

    /// Clamps each component to -1 .. 1 and rounds it to the nearest step, ties to even.
    constexpr void Set(float x, float y, float z, bool isWNegative)
    {
        word = KvFieldBits(KvUnitToSteps(x, kSteps), 0, kBits) |
               KvFieldBits(KvUnitToSteps(y, kSteps), kBits, kBits) |
               KvFieldBits(KvUnitToSteps(z, kSteps), 2 * kBits, kBits) |
               (isWNegative ? kSignBits : 0U);
    }

    constexpr bool operator==(const CKvPackedQuaternion&) const = default;

private:
    static constexpr int kBits = 10;
    static constexpr std::int32_t kSteps = 511;
    static constexpr float kStep = 1.0F / 511.0F;
    static constexpr std::uint32_t kSignBits = 3U << 30U;

    [[nodiscard]] constexpr float Component(int firstBit) const
    {
        return static_cast<float>(KvSignedField(word, firstBit, kBits)) * kStep;
    }
};

static_assert(sizeof(CKvPackedQuaternion) == 4 &&
              std::is_trivially_copyable_v<CKvPackedQuaternion>);
