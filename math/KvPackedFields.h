// Numbers from -1 to 1 as two's complement bit fields of a 32-bit word: what packed normals and
// packed quaternions are made of.

#pragma once

#include <cstdint>

/// The nearest step of \a value, ties to even, where 1 is \a steps steps. Values beyond -1 .. 1 are
/// clamped, one that is not a number counts as 0. The current rounding mode does not matter to the
/// choice of the step.
constexpr std::int32_t KvUnitToSteps(float value, std::int32_t steps)
{
    const float clamped = value > 1.0F     ? 1.0F
                          : value >= -1.0F ? value
                          : value < -1.0F  ? -1.0F
                                           : 0.0F;
    const float scaled = clamped * static_cast<float>(steps);
    const auto whole = static_cast<std::int32_t>(scaled);
    const float rest = scaled - static_cast<float>(whole);
    const bool isOdd = whole % 2 != 0;
    if (rest > 0.5F || (rest == 0.5F && isOdd))
        return whole + 1;
    if (rest < -0.5F || (rest == -0.5F && isOdd))
        return whole - 1;
    return whole;
}

/// The signed field of \a bitCount bits that begins at \a firstBit.
constexpr std::int32_t KvSignedField(std::uint32_t word, int firstBit, int bitCount)
{
    return static_cast<std::int32_t>(word << (32 - firstBit - bitCount)) >> (32 - bitCount);
}

/// A word with the low \a bitCount bits of \a value at \a firstBit and 0 elsewhere.
constexpr std::uint32_t KvFieldBits(std::int32_t value, int firstBit, int bitCount)
{
    return (static_cast<std::uint32_t>(value) & ((1U << bitCount) - 1U)) << firstBit;
}
