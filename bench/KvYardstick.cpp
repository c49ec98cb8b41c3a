#include "bench/KvYardstick.h"

#include <tinyxml.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>

namespace {

bool ReadWhole(const char* path, std::string& text)
{
    std::error_code error;
    const auto sizeBytes = std::filesystem::file_size(path, error);
    std::FILE* file = error ? nullptr : std::fopen(path, "rb");
    if (file == nullptr)
        return false;
    text.resize(sizeBytes);
    const bool whole = std::fread(text.data(), 1, text.size(), file) == text.size();
    std::fclose(file);
    return whole;
}

bool ParseFile(const char* path)
{
    std::string text;
    if (!ReadWhole(path, text))
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
