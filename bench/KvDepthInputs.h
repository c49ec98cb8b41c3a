// Inputs of one document each that nests very deeply. Not indented: white space would make the size
// of the file grow with the square of the depth.

#pragma once

#include <cstdint>
#include <string>

#include "bench/KvInputGenerator.h"

enum class EKvDeepDocument
{
    Level,
    Rules,
    Template
};

/// Writes the four documents into a new folder \a name below \a parent; \a deep nests \a depth
/// elements. Those of rules and template are sub-objects, which a global state machine brings into
/// the output.
///
/// Errors: false when a file could not be written; one line on standard error then tells so.
[[nodiscard]] bool KvWriteDeepInputs(EKvDeepDocument deep, std::uint32_t depth,
                                     const std::string& parent, const std::string& name,
                                     CKvInputPaths& inputs);
