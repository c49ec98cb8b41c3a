#include "core/KvSaltedHash.h"

#include "platform/KvPlatform.h"

namespace {

struct CSalt
{
    std::uint64_t forHigh = KvPlatformRandomSeed();
    std::uint64_t forLow = KvPlatformRandomSeed();
    std::uint64_t offset = KvPlatformRandomSeed();
};

}  // namespace

std::uint32_t KvSaltedHash(std::uint64_t key)
{
    static const CSalt s_salt;
    const std::uint64_t high = key >> 32;
    const std::uint64_t low = key & 0xFFFFFFFF;
    return static_cast<std::uint32_t>(
        ((s_salt.forHigh + high) * (s_salt.forLow + low) + s_salt.offset) >> 32);
}
