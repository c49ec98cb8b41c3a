// Whole files, as the benchmarks need them.

#pragma once

#include <cstdint>
#include <string>

/// Errors: false when the file could not be read whole.
[[nodiscard]] bool KvReadWholeFile(const std::string& path, std::string& content);

/// Errors: false when the file could not be written whole.
[[nodiscard]] bool KvWriteWholeFile(const std::string& path, const std::string& content);

/// 0 for a file that is not there.
std::uint64_t KvFileBytes(const std::string& path);
