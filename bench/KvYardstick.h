// The yardstick of the benchmark: what TinyXML alone costs for the documents of one run.

#pragma once

#include <span>

/// Reads each file into memory, parses it with TinyXML and destroys the document, one after
/// another.
///
/// Errors: false when a file could not be read whole or is not well-formed; one line on standard
///         error then names it.
[[nodiscard]] bool KvRunYardstick(std::span<const char* const> paths);
