// What a parse of a command line comes to.

#pragma once

#include <cstdint>

namespace KvCmdLine {

/// The library makes these two only; a callback may give any value, which nobody looks at.
enum EKvParseResult : std::int32_t
{
    PARSE_RESULT_SUCCESS = 0,
    PARSE_RESULT_INVALID_COMMAND_LINE = 4
};

}  // namespace KvCmdLine
