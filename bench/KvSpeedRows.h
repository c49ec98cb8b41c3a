// What the whole tool costs beside the yardstick, and how that grows with objects and rules.

#pragma once

#include "bench/KvBenchRun.h"
#include "bench/KvGoals.h"

/// Rows 1, 3, 4 and 5; of a quick run 1 and 3, at 10 MB, and 5.
///
/// Errors: false when something could not be measured; standard error then tells what.
[[nodiscard]] bool KvMeasureSpeed(const CKvBenchRun& run, CKvFindings& findings);
