// How the cost grows with what a document may have very much of.

#pragma once

#include <span>

#include "bench/KvBenchRun.h"
#include "bench/KvGoals.h"

/// Row 11.
///
/// Errors: false when something could not be measured; standard error then tells what.
[[nodiscard]] bool KvMeasureStrains(const CKvBenchRun& run, CKvFindings& findings);

/// The child's work: saves a tree and tells the CPU time of that. Arguments are the number of its
/// nodes, the number of names that these have, the path and "LE" or "BE".
[[nodiscard]] bool KvRunSaveNames(std::span<const char* const> arguments);
