// The operating system as the library sees it. Everything above this folder reaches the system
// through these functions and the C++ standard library alone; each system has one source file.
//
// Paths are zero-terminated bytes (UTF-8 by custom). '\' and '/' both separate folders: they become
// the host's separator inside these functions and nowhere else. Unless a function says otherwise,
// texts are the caller's, must not be null and are only read; nothing throws but std::bad_alloc.

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

enum class EKvSeekOrigin
{
    Start,
    Current,
    End
};

/// A file that is being written beside the one that it will replace. Paths are host paths.
struct CKvReplacement
{
    std::FILE* stream = nullptr;
    std::string temporaryPath;
    std::string targetPath;
};

enum class EKvReplacementStatus
{
    /// The replacement's stream is open for writing.
    Begun,
    /// This target can only be written in place: it is no plain file, has other hard links, may not
    /// be written at all, or its folder takes no new file. Opening it directly tells which.
    WriteDirectly,
    /// The system failed (no space, too many open files, I/O error). The target is as it was.
    Failed
};

struct CKvFolderOperations;

/// All operations on the disk. The table is replaceable as a whole, so that a test can make any
/// single operation fail the way the real one does.
struct CKvDiskOperations
{
    /// Opens a file as a buffered stream; \a mode is 'r', 'w' or 'a' followed by 'b' or 't', with
    /// the meaning that C gives them. Behind those two an 'x' in a 'w' mode refuses what is there,
    /// and a 'p' makes a new file private: only its owner may read it.
    ///
    /// Ownership: the caller closes the stream with closeStream.
    /// Errors:    null when the file is absent, refused or a folder.
    std::FILE* (*openStream)(const char* path, const char* mode);

    /// Gives the bytes read: fewer than \a sizeBytes at the end of the file or after a failure.
    std::size_t (*readStream)(std::FILE* stream, void* buffer, std::size_t sizeBytes);

    /// Reads at a place given in bytes from the start, past the stream's buffer and without moving
    /// its position. For streams that are open for reading alone.
    ///
    /// Errors: as readStream; 0 also for a stream without positions and a negative offset.
    std::size_t (*readStreamAt)(std::FILE* stream, std::int64_t offsetBytes, void* buffer,
                                std::size_t sizeBytes);

    /// Gives the bytes accepted: fewer than \a sizeBytes when this write or the flush of earlier
    /// ones failed. Accepted bytes can still be lost; only closeStream tells.
    std::size_t (*writeStream)(std::FILE* stream, const void* data, std::size_t sizeBytes);

    /// False when the stream cannot seek or the position would be negative; it then stays put.
    bool (*seekStream)(std::FILE* stream, std::int64_t offsetBytes, EKvSeekOrigin origin);

    /// The position in bytes from the start; -1 when the stream has none.
    std::int64_t (*tellStream)(std::FILE* stream);

    /// Flushes and closes; the stream is gone in either case.
    ///
    /// Errors: false when this flush, any earlier read or write or the closing itself failed.
    bool (*closeStream)(std::FILE* stream);

    /// Starts a new content for a file that is rewritten whole, in a temporary file beside it.
    /// Links are followed first, and the temporary takes over mode and owner of the old file.
    /// \a mode is 'w' followed by 'b' or 't' and, as for openStream, 'p'.
    ///
    /// Ownership: after Begun the caller closes the stream, then commits or discards.
    EKvReplacementStatus (*beginReplacement)(const char* path, const char* mode,
                                             CKvReplacement& replacement);

    /// Moves the closed temporary over its target in one step.
    ///
    /// Errors: false when the system refuses; target and temporary are both as they were.
    bool (*commitReplacement)(const CKvReplacement& replacement);

    /// Removes the closed temporary; the target is as it was.
    void (*discardReplacement)(const CKvReplacement& replacement);

    /// Folders and the entries in them: see KvPlatformFolders.h.
    const CKvFolderOperations* folders;
};

/// The table in use: the host's own, or the one set last.
const CKvDiskOperations& KvPlatformDisk();

/// The host's own table, for a replacement that passes most operations on.
const CKvDiskOperations& KvPlatformHostDisk();

/// Sets the table in use. Null brings the host's own back.
///
/// Ownership: the table stays the caller's and must live until another one is set.
void KvPlatformSetDisk(const CKvDiskOperations* operations);

/// True when something that is no folder has this path.
bool KvPlatformFileExists(const char* path);

/// The wall clock in the local time zone; hour 0 to 23, minute and second from 0.
struct CKvLocalTime
{
    int hour = 0;
    int minute = 0;
    int second = 0;
};

/// All zero when the system cannot tell the time.
CKvLocalTime KvPlatformLocalTime();

/// A number that differs from process to process, for hash tables that outsiders must not predict.
std::uint64_t KvPlatformRandomSeed();

/// Hands a line to the debugger's output: standard error in debug builds, nowhere in release
/// builds.
void KvPlatformDebugOutput(const char* line);

/// Sends the debugger's output to \a sink instead. Null brings the default back.
void KvPlatformSetDebugOutput(void (*sink)(const char* line));

/// Makes a write to a reader that has gone away fail like any other write instead of ending the
/// process. For programs to call once at their start; a library must not decide this for its host.
void KvPlatformIgnoreBrokenPipes();
