// CKvHENDN3: a unit normal in one 32-bit word. CKvVector3 loads and stores it.

#pragma once

#include <cstdint>
#include <type_traits>

#include "math/KvPackedFields.h"

/// x in bits 0 to 10, y in bits 11 to 21, z in bits 22 to 31, each two's complement. 1 is 1023
/// steps of x and y and 511 steps of z. A default-constructed one must be assigned before it is
/// read.
struct CKvHENDN3
{
    std::uint32_t word;

    CKvHENDN3() = default;
    constexpr explicit CKvHENDN3(std::uint32_t wordIn) : word(wordIn) {}

    [[nodiscard]] constexpr float GetX() const { return Component(0, kBitsXY, kStepXY); }
    [[nodiscard]] constexpr float GetY() const { return Component(kFirstY, kBitsXY, kStepXY); }
    [[nodiscard]] constexpr float GetZ() const { return Component(kFirstZ, kBitsZ, kStepZ); }

    /// Clamps each component to -1 .. 1 and rounds it to the nearest step, ties to even.
    constexpr void Set(float x, float y, float z)
    {
        word = KvFieldBits(KvUnitToSteps(x, kStepsXY), 0, kBitsXY) |
               KvFieldBits(KvUnitToSteps(y, kStepsXY), kFirstY, kBitsXY) |
               KvFieldBits(KvUnitToSteps(z, kStepsZ), kFirstZ, kBitsZ);
    }

    constexpr bool operator==(const CKvHENDN3&) const = default;

private:
    static constexpr int kBitsXY = 11;
    static constexpr int kBitsZ = 10;
    static constexpr int kFirstY = 11;
    static constexpr int kFirstZ = 22;
    static constexpr std::int32_t kStepsXY = 1023;
    static constexpr std::int32_t kStepsZ = 511;
    static constexpr float kStepXY = 1.0F / 1023.0F;
    static constexpr float kStepZ = 1.0F / 511.0F;

    [[nodiscard]] constexpr float Component(int firstBit, int bitCount, float step) const
    {
        return static_cast<float>(KvSignedField(word, firstBit, bitCount)) * step;
    }
};

static_assert(sizeof(CKvHENDN3) == 4 && std::is_trivially_copyable_v<CKvHENDN3>);
