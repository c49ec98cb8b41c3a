// What the operating system knows about threads and the C++ standard library does not.

#pragma once

/// Names the calling thread for debuggers and process lists; without effect where the system has
/// no such names. What is longer than the system takes (15 bytes on Linux) is cut.
void KvPlatformSetThreadName(const char* name);
