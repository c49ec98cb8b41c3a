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
    std::vsnprintf(line, sizeof line, format, arguments);
    va_end(arguments);
    KvPlatformDebugOutput(line);
#endif
}
