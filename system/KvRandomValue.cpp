#include "system/KvRandomValue.h"

#include <cstdint>

namespace {

constexpr std::uint32_t kFactor = 1103515245;
constexpr std::uint32_t kIncrement = 12345;
constexpr std::uint32_t kLargest = 0x7FFF;

/// 1 / 32767; its product with 32767 rounds to 1.
constexpr float kPartOfOne = 3.051851e-5F;
static_assert(kPartOfOne * static_cast<float>(kLargest) == 1.0F);

}  // namespace

int CKvRandomValue::GetNextInt()
{
    const std::uint32_t seed = static_cast<std::uint32_t>(m_seed) * kFactor + kIncrement;
    m_seed = static_cast<int>(seed);
    return static_cast<int>(seed >> 16 & kLargest);
}

float CKvRandomValue::GetNextPart()
{
    return static_cast<float>(GetNextInt()) * kPartOfOne;
}

float CKvRandomValue::GetNextFloat(float max)
{
    return GetNextPart() * max;
}

float CKvRandomValue::GetNextFloat(float min, float max)
{
    return min + (max - min) * GetNextPart();
}

float CKvRandomValue::GetNextFloatCentered(float range)
{
    return (GetNextPart() - 0.5F) * range * 2.0F;
}
