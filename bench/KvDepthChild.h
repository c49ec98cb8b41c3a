// What the library does with a tree that is one long chain of nodes.

#pragma once

#include <span>

/// The child's work. Arguments are "binary", "dump", "copy", "compare" or "release", the depth, and
/// a path for a file. Makes the tree and tells the CPU time of that operation alone.
///
/// Errors: false when the operation refuses; the time is then that of the refusal.
[[nodiscard]] bool KvRunDepth(std::span<const char* const> arguments);
