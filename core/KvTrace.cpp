#include "core/KvTrace.h"

#include <cstdarg>
#include <cstdio>

#include "platform/KvPlatform.h"

void KvTrace([[maybe_unused]] const char* format, ...)
{
#ifndef NDEBUG
    char line[8192];
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(line, sizeof line, format, arguments);
    va_end(arguments);
    if (length >= 0)
        KvPlatformDebugOutput(line);
#endif
}
