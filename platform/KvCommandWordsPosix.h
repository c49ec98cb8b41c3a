// Command texts on their way into the system calls of this folder's sources, not for others.

#pragma once

#include <string>
#include <vector>

/// The words of a command, by the rules that stand in platform/KvPlatformProcess.h.
std::vector<std::string> KvSplitCommand(const char* command);
