#include <pthread.h>

#include <array>
#include <cstring>

#include "platform/KvPlatformThreads.h"

void KvPlatformSetThreadName(const char* name)
{
    std::array<char, 16> shortened = {};  // the system refuses longer ones
    std::memcpy(shortened.data(), name, strnlen(name, shortened.size() - 1));
    pthread_setname_np(pthread_self(), shortened.data());
}
