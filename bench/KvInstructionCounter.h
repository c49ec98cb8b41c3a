// Counts the instructions of whole processes, which unlike times are the same in every run.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bench/KvProcessMeter.h"

/// Runs every process under callgrind, two at a time, which takes them some fifty times as long.
/// The counts are those of the processes' own instructions from their start to their end.
///
/// \a folder takes files that are of no further use.
///
/// Errors: false when a process fails; standard error then tells which. Nothing in \a counts when
///         valgrind is not installed.
[[nodiscard]] bool KvCountInstructions(const std::vector<CKvProcess>& processes,
                                       const std::string& folder,
                                       std::optional<std::vector<double>>& counts);
