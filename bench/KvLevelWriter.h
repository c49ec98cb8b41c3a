// Writes the level of a set of benchmark inputs.

#pragma once

#include <cstdint>
#include <string>

#include "bench/KvInputPlan.h"

/// Errors: false when the file could not be written; what was written stays.
[[nodiscard]] bool KvWriteLevel(const CKvInputPlan& plan, std::uint32_t seed,
                                const std::string& path);
