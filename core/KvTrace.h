// The developer trace: messages for whoever works on a program, absent from what users run.

#pragma once

/// Formats a message as std::printf does and hands it to the debugger's output. In release builds
/// (NDEBUG) it does nothing. At most 8191 bytes are shown.
#ifdef __GNUC__
[[gnu::format(printf, 1, 2)]]
#endif
void KvTrace(const char* format, ...);
