// The instructions of the whole tool beside those of the yardstick.

#pragma once

#include "bench/KvBenchRun.h"
#include "bench/KvGoals.h"

/// Rows 2 and 10.
///
/// Errors: false when something could not be measured; standard error then tells what.
[[nodiscard]] bool KvMeasureInstructions(const CKvBenchRun& run, CKvFindings& findings);
