// What the benchmark's own program does as a child process of itself, so that it is measured alone.

#pragma once

#include <span>
#include <string_view>

/// Hidden: with it the program is a child; the name of the action and its arguments follow.
inline constexpr std::string_view kKvChildOption = "--child";

/// Gives the exit status of the child: 0, 1 when the action failed, 2 when there is no such action.
int KvRunBenchChild(std::span<const char* const> words);
