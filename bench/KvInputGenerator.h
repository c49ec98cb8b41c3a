// Writes a level, a rules document and two template files that look like a real game's. The same
// parameters give the same bytes on every machine.

#pragma once

#include <string>

#include "bench/KvInputParameters.h"

/// The four documents that one run of the tool reads.
struct CKvInputPaths
{
    std::string level;
    std::string rules;
    std::string firstTemplates;
    std::string secondTemplates;
};

/// Writes bench.level, bench.gamerules, first.template and second.template into an existing folder;
/// files of these names are replaced. Needs little memory however large the files are.
///
/// Errors: false when a file could not be written; what was written stays.
[[nodiscard]] bool KvGenerateInputs(const CKvInputParameters& parameters, const std::string& folder,
                                    CKvInputPaths& paths);
