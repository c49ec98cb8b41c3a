#include "core/KvSaltedHash.h"

#include "core/KvSipHash.h"
#include "platform/KvPlatform.h"

CKvHashSalt::CKvHashSalt()
    : forHigh(KvPlatformRandomSeed()),
      forLow(KvPlatformRandomSeed()),
      offset(KvPlatformRandomSeed())
{
}

std::uint32_t KvSaltedHash(std::string_view text)
{
    const CKvHashSalt& salt = CKvHashSalt::Get();
    return static_cast<std::uint32_t>(KvSipHash(salt.forHigh, salt.forLow, text));
}
