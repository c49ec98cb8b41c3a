#include "core/KvSaltedHash.h"

#include "platform/KvPlatform.h"

std::uint32_t KvSaltedHash(std::uint64_t key)
{
    static const std::uint64_t s_multiplier = KvPlatformRandomSeed() | 1u;
    return static_cast<std::uint32_t>((key * s_multiplier) >> 32);
}
