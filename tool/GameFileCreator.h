// The game file creator: one pass from a level, up to two template files and the game rules to one
// .game file.

#pragma once

/// Runs the tool with a program's arguments: level, rules, output, two template files (either may
/// be empty) and "LE" or "BE" in any case.
///
/// Gives 0 when the .game file was written. On every failure it gives -1, having printed why where
/// a message is due, and the output file is as it was.
int RunGameFileCreator(int argumentCount, const char* const* arguments);
