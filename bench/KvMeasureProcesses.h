// Measures processes in turn, so that a slow spell of the machine meets them all.

#pragma once

#include <string>
#include <vector>

#include "bench/KvProcessMeter.h"

/// A process, and what it cost: medians over the rounds.
struct CKvMeasuredProcess
{
    CKvProcess process;

    /// The process writes the CPU seconds that count to its standard output (KvPrintSeconds), a
    /// file. They take the place of the system's.
    bool timesItself = false;

    CKvProcessCost cost = {};
};

/// Each round runs every process once.
///
/// Errors: false as soon as one fails; standard error then tells which.
[[nodiscard]] bool KvMeasureProcesses(std::vector<CKvMeasuredProcess>& processes, int rounds);

/// For the child: tells the CPU seconds that count.
void KvPrintSeconds(double seconds);

/// The seconds that a process has written to the file \a path; 0 when there are none.
double KvReadSeconds(const std::string& path);
