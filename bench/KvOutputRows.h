// What much output costs beside a plain copy of as many bytes.

#pragma once

#include <span>

#include "bench/KvBenchRun.h"
#include "bench/KvGoals.h"

/// Inputs whose every object is bound ten times, or not at all.
CKvInputParameters KvOutputParameters(bool bound);

/// Rows 6 and 7.
///
/// Errors: false when something could not be measured; standard error then tells what.
[[nodiscard]] bool KvMeasureOutput(const CKvBenchRun& run, CKvFindings& findings);

/// The child's work: copies a file to another through 64 KiB and tells the CPU time. Arguments are
/// both paths.
[[nodiscard]] bool KvRunPlainCopy(std::span<const char* const> arguments);
