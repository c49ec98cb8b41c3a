// Writes the rules document of a set of benchmark inputs.

#pragma once

#include <string>

#include "bench/KvInputParameters.h"
#include "bench/KvInputPlan.h"

/// Every other rule includes a template, every third one has a sub-object of its own.
///
/// Errors: false when the file could not be written; what was written stays.
[[nodiscard]] bool KvWriteRules(const CKvInputPlan& plan, const CKvInputParameters& parameters,
                                const std::string& path);
