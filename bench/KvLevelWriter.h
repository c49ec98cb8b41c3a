// Writes the level of a set of benchmark inputs.

#pragma once

#include <string>

#include "bench/KvInputParameters.h"
#include "bench/KvInputPlan.h"

/// Errors: false when the file could not be written; what was written stays.
[[nodiscard]] bool KvWriteLevel(const CKvInputPlan& plan, const CKvInputParameters& parameters,
                                const std::string& path);
