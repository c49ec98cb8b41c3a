// Other programs, started and watched. Paths follow the rules of platform/KvPlatform.h.
//
// A command is one text and no shell reads it. Words are parted by spaces and tabs outside double
// quotes; the quotes themselves are left out and may begin and end within a word. A quote behind a
// backslash stands for itself, and so do two in a row within quotes. Backslashes are common bytes
// but before a quote, where each two stand for one. These are the rules by which C programs of
// systems without word lists split their command lines, so that a command means the same on every
// host.

#pragma once

#include <cstdint>

enum class EKvProcessStatus
{
    NotStarted,
    Running,
    /// It ended by itself, with an exit code.
    Exited,
    /// A signal ended it: a fault of its own, or somebody who wanted it gone.
    Killed,
    /// It ended, but the host has set its process up to forget how (by ignoring the signal of
    /// children that end) or has asked for it elsewhere.
    Lost
};

/// What the system calls a process that is not there.
inline constexpr std::intptr_t kKvNoProcess = -1;

/// Starts the program that the command's first word names; without a separator it is looked for on
/// PATH. It inherits the environment, the current folder and the three standard streams, but no
/// other open file and no blocked signal. Ignored signals stay ignored, but SIGPIPE and SIGCHLD.
///
/// Ownership: the process is asked for with KvPlatformAskProcess() until it has ended.
/// Errors:    false when the command has no word or the program cannot be started.
[[nodiscard]] bool KvPlatformStartProcess(const char* command, std::intptr_t& process);

/// Tells how a process is, after it has ended when \a wait asks for that.
///
/// Ownership: with any status but Running the process is gone; nothing may be asked of it again.
/// Units:     \a code is the exit code (0 to 255 on POSIX hosts) after Exited, the number of the
///            signal after Killed, otherwise as it was.
[[nodiscard]] EKvProcessStatus KvPlatformAskProcess(std::intptr_t process, bool wait, int& code);

/// Ends a running process without asking it, but not the processes that it has started itself. It
/// has not ended yet when this returns.
void KvPlatformKillProcess(std::intptr_t process);

/// Has the desktop show a url, without waiting for it and without anything on the standard
/// streams. Nothing happens for a text that begins with '-', which would be an option, for an
/// empty one, and on a host without a desktop.
void KvPlatformOpenUrl(const char* url);
