// Runs a program as a child process and tells what it cost.

#pragma once

#include <string>
#include <vector>

/// What to run.
struct CKvProcess
{
    /// The path of the program, then its arguments.
    std::vector<std::string> command;

    /// The files that standard input comes from and standard output goes to.
    std::string input = "/dev/null";
    std::string output = "/dev/null";
};

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

/// How a process ended.
struct CKvProcessEnd
{
    /// What it returned, 0 to 255, unless a signal ended it.
    int status = 0;

    /// 0 when it ended by itself.
    int signal = 0;

    CKvProcessCost cost;
};

/// Runs \a process and waits for its end, whatever that is.
///
/// Errors: false when it did not start; one line on standard error then tells why.
[[nodiscard]] bool KvRunProcess(const CKvProcess& process, CKvProcessEnd& end);

/// Runs \a process, which must succeed.
///
/// Errors: false when it did not start, or ended by a signal or with a status other than 0; one
///         line on standard error then names the command and the reason.
[[nodiscard]] bool KvMeasureProcess(const CKvProcess& process, CKvProcessCost& cost);

/// The path of the running program; empty when the system does not tell.
std::string KvOwnProgramPath();

/// The path of an installed program; empty when no folder of PATH has it.
std::string KvFindProgram(const std::string& name);
