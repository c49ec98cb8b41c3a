// The variables that the process was started with, and how the host names and finds programs.

#pragma once

#include <string>

/// The value of an environment variable; empty when it is not set.
std::string KvPlatformEnvironmentVariable(const char* name);

/// What stands between the folders of the variable PATH.
char KvPlatformSearchPathSeparator();

/// The name of the file that holds the program \a name.
std::string KvPlatformProgramFileName(const char* name);
