#include "bench/KvYardstick.h"

#include <tinyxml.h>

#include <cstdio>
#include <string>

#include "bench/KvBenchFile.h"

namespace {

bool ParseFile(const char* path)
{
    std::string text;
    if (!KvReadWholeFile(path, text))
        return false;
    TiXmlDocument document;
    document.Parse(text.c_str());
    return !document.Error();
}

}  // namespace

bool KvRunYardstick(std::span<const char* const> paths)
{
    for (const char* path : paths) {
        if (!ParseFile(path)) {
            std::fprintf(stderr, "bench: yardstick cannot parse '%s'\n", path);
            return false;
        }
    }
    return true;
}
