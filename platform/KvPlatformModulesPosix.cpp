#include <dlfcn.h>

#include "platform/KvHostPathPosix.h"
#include "platform/KvPlatformModules.h"

void* KvPlatformLoadModule(const char* path)
{
    if (*path == '\0')
        return nullptr;  // the system would give the program itself
    return dlopen(KvToHostPath(path).c_str(), RTLD_NOW | RTLD_LOCAL);
}

void* KvPlatformFindInModule(void* module, const char* name)
{
    return dlsym(module, name);
}

void KvPlatformReleaseModule(void* module)
{
    dlclose(module);
}
