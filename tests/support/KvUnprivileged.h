// Work done without root's rights, for tests of what a user may not do. Also for tests that write
// to devices: as root, a writer that is broken would replace the device itself.

#pragma once

#include <functional>

/// Runs \a action in a child process, as an ordinary user if the test runs as root, and gives what
/// it returns, 0 to 254; 255 when it could not be run.
int KvRunUnprivileged(const std::function<int()>& action);
