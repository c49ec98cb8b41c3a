#include <cstdlib>

#include "platform/KvPlatformEnvironment.h"

std::string KvPlatformEnvironmentVariable(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

char KvPlatformSearchPathSeparator()
{
    return ':';
}

std::string KvPlatformProgramFileName(const char* name)
{
    return name;
}
