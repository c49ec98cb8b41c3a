// Runs a program as a user does and tells all that a user sees.

#pragma once

#include <string>
#include <vector>

struct CKvProcessResult
{
    /// What the program returned, 0 to 255; -1 when a signal ended it.
    int status = -1;
    std::string standardOutput;
    std::string standardError;
};

struct CKvProcessOptions
{
    /// "NAME=value", besides the environment of the test.
    std::vector<std::string> environment;

    /// Gives up the rights of root, if the test has them.
    bool asOrdinaryUser = false;

    /// Units: KiB of address space that the program may use; 0 for no limit.
    int memoryLimitKiB = 0;

    /// Closes the reading end of standard output before the program starts.
    bool outputReaderIsGone = false;
};

/// Runs \a program in \a folder and waits for it.
CKvProcessResult KvRunProcess(const std::string& program, const std::vector<std::string>& arguments,
                              const std::string& folder, const CKvProcessOptions& options = {});
