// Inputs that strain one thing each.

#pragma once

#include <span>
#include <string>
#include <string_view>

#include "bench/KvBenchRun.h"

/// A strain: what grows, and the generated inputs with so much of it or, else alike, without.
struct CKvStrain
{
    std::string_view row;
    const char* name;
    std::uint32_t size;
    CKvInputParameters (*parameters)(std::uint32_t size, bool strained);
};

std::span<const CKvStrain> KvStrains();

/// Inputs with a level of one object among \a siblings other elements, and nothing else.
///
/// Errors: false when a file could not be written; one line on standard error then tells so.
[[nodiscard]] bool KvWriteSiblings(std::uint32_t siblings, const std::string& parent,
                                   const std::string& name, CKvInputPaths& inputs);
