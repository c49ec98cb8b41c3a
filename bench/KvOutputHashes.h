// What the tool and the library write for the measured inputs, so that runs before and after a
// change can be compared.

#pragma once

#include "bench/KvBenchRun.h"

/// Prints to standard output, for every input and both byte orders, the size and the CRC-64 of the
/// output.
///
/// Errors: false when an output could not be made; standard error then tells which.
[[nodiscard]] bool KvPrintOutputHashes(const CKvBenchRun& run);
