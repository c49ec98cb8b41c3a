// Whether documents of a depth of 1,000,000 are read, made and released, on large and small stacks.

#pragma once

#include "bench/KvBenchRun.h"
#include "bench/KvGoals.h"

/// Row 12.
///
/// Errors: false when something could not be measured; standard error then tells what. That the
///         tool or the library refuses or crashes is a finding, no error.
[[nodiscard]] bool KvMeasureDepth(const CKvBenchRun& run, CKvFindings& findings);
