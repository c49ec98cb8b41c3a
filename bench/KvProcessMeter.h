// Runs a program as a child process and tells what it cost.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct CKvProcessCost
{
    double userSeconds = 0;
    double systemSeconds = 0;

    /// Peak resident memory. The system counts the memory of this process at the child's start in,
    /// so keep this process small.
    double peakBytes = 0;

    /// All pages that were brought in without reading from the disk. For a process that takes its
    /// memory once this is its peak to the page, where the system counts resident memory in steps
    /// of some hundred KiB.
    double touchedBytes = 0;

    double CpuSeconds() const { return userSeconds + systemSeconds; }
};

/// Runs \a command (path of the program, then its arguments) with standard output to nowhere and
/// waits for its end.
///
/// Errors: false when it did not start, or ended by a signal or with a status other than 0; one
/// line
///         on standard error then names the command and the reason.
[[nodiscard]] bool KvMeasureProcess(const std::vector<std::string>& command, CKvProcessCost& cost);

/// The path of the running program; empty when the system does not tell.
std::string KvOwnProgramPath();
