// A workload: one set of inputs, and what the tool and the yardstick cost on it.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bench/KvInputGenerator.h"
#include "bench/KvProcessMeter.h"

/// The programs that are compared.
struct CKvBenchPrograms
{
    std::string tool;

    /// Words that come before the paths of the four inputs.
    std::vector<std::string> yardstick;
};

struct CKvWorkload
{
    std::string name;
    CKvInputParameters parameters;

    // Filled by KvPrepareWorkloads.
    CKvInputPaths inputs;
    std::string output;
    std::uint64_t levelBytes = 0;

    // Filled by KvMeasureWorkloads: medians over the rounds.
    CKvProcessCost tool;
    CKvProcessCost yardstick;
    std::uint64_t outputBytes = 0;
};

/// Generates the inputs of each workload in a folder of its own below \a folder.
///
/// Errors: false when a file could not be written; one line on standard error then tells which.
[[nodiscard]] bool KvPrepareWorkloads(std::vector<CKvWorkload>& workloads,
                                      const std::string& folder);

/// Measures in turn: each round runs the tool and the yardstick once on every workload (small
/// workloads several times, the mean counts), so that a slow spell of the machine meets them all.
///
/// Errors: false as soon as a program fails; standard error then tells which.
[[nodiscard]] bool KvMeasureWorkloads(std::vector<CKvWorkload>& workloads,
                                      const CKvBenchPrograms& programs, int rounds);
