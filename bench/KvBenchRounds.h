// How often a benchmark measures, as its user says on the command line.

#pragma once

#include <string_view>

/// Reads a number of rounds.
///
/// Errors: false when the text is no number from 1 to 1000.
[[nodiscard]] bool KvReadRounds(std::string_view text, int& rounds);

/// Reads the command line "PROGRAM [ROUNDS]"; without ROUNDS they stay as they are.
///
/// Errors: false, with the usage on standard error.
[[nodiscard]] bool KvReadRoundsOption(int argc, char** argv, const char* program, int& rounds);
