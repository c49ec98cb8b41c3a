#include "bench/KvBenchFile.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <system_error>

bool KvReadWholeFile(const std::string& path, std::string& content)
{
    std::error_code error;
    const auto sizeBytes = std::filesystem::file_size(path, error);
    std::FILE* file = error ? nullptr : std::fopen(path.c_str(), "rb");
    if (file == nullptr)
        return false;
    content.resize(sizeBytes);
    const bool whole = std::fread(content.data(), 1, content.size(), file) == content.size();
    std::fclose(file);
    return whole;
}

bool KvWriteWholeFile(const std::string& path, const std::string& content)
{
    std::ofstream file(path, std::ios::binary);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    return file.good();
}

std::uint64_t KvFileBytes(const std::string& path)
{
    std::error_code error;
    const std::uintmax_t sizeBytes = std::filesystem::file_size(path, error);
    return error ? 0 : sizeBytes;
}
