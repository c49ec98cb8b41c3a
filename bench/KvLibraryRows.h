// The library's way from XML to the binary tree beside what others take for the same content, and
// the load of a binary tree.

#pragma once

#include <span>

#include "bench/KvBenchRun.h"
#include "bench/KvGoals.h"

/// Rows 8 and 9.
///
/// Errors: false when something could not be measured, or a peer's output does not hold the
/// content;
///         standard error then tells what.
[[nodiscard]] bool KvMeasureLibrary(const CKvBenchRun& run, CKvFindings& findings);

// --- The children's work. The first argument is the file to read; both that read alone tell the
// CPU time of that.

/// Loads an XML file, saves it as a binary tree to the second argument and releases the tree.
[[nodiscard]] bool KvRunConvert(std::span<const char* const> arguments);

/// Loads a binary tree and leaves it to the end of the process.
[[nodiscard]] bool KvRunLoadBinary(std::span<const char* const> arguments);

/// Reads a file into one block.
[[nodiscard]] bool KvRunReadWhole(std::span<const char* const> arguments);
