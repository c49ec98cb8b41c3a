// One run of the benchmark of the tool: what its user asked for, and the processes that it
// measures.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "bench/KvInputGenerator.h"
#include "bench/KvProcessMeter.h"

struct CKvBenchRun
{
    /// The path of the tool.
    std::string tool;

    /// The path of this program, which is its own children's too (KvBenchChild.h).
    std::string ownProgram;

    int rounds = 7;

    /// Only what is measured at 10 MB.
    bool quick = false;

    /// The tool, which writes KvGamePath(inputs) in the byte order "LE" or "BE".
    CKvProcess Tool(const CKvInputPaths& inputs, std::string_view byteOrder = "LE") const;

    /// What TinyXML alone costs for these inputs.
    CKvProcess Yardstick(const CKvInputPaths& inputs) const;

    /// This program with one of its children's actions.
    CKvProcess Child(std::string_view action, const std::vector<std::string>& arguments) const;
};

/// The tool's output, beside its level.
std::string KvGamePath(const CKvInputPaths& inputs);

/// Generates inputs in a new folder \a name below \a parent.
///
/// Errors: false when a file could not be written; one line on standard error then tells which.
[[nodiscard]] bool KvPrepareInputs(const CKvInputParameters& parameters, const std::string& parent,
                                   const std::string& name, CKvInputPaths& inputs);
