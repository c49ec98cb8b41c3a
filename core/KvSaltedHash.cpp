#include "core/KvSaltedHash.h"

#include "platform/KvPlatform.h"

CKvHashSalt::CKvHashSalt()
    : forHigh(KvPlatformRandomSeed()),
      forLow(KvPlatformRandomSeed()),
      offset(KvPlatformRandomSeed())
{
}
