// The system's device that is always full: what is written to it is lost as late as on a real disk.

#pragma once

#include <functional>
#include <optional>

/// Gives what \a save gives for the device's path. It runs in a process of its own, and never as
/// root, for whom a writer that is broken would replace the device itself.
///
/// Errors: nothing when there is no such device or this user may not become another.
std::optional<bool> KvSaveToFullDevice(const std::function<bool(const char* path)>& save);
