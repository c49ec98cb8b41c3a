// Folders and the entries in them as the library sees them, beside the streams of KvPlatform.h and
// under the same rules for paths and texts.
//
// A symbolic link is an entry of its own kind, whatever it leads to: nothing here takes one for a
// folder. Only the last name of a path counts in that; links before it are followed.

#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "platform/KvPlatform.h"

enum class EKvEntryKind
{
    Folder,
    Link,
    /// A file, a pipe, a device: all that is neither folder nor link.
    Other
};

struct CKvFolderEntry
{
    std::string name;
    EKvEntryKind kind = EKvEntryKind::Other;

    /// As CKvFolderOperations::fileTime gives it, with two differences: read permission is not
    /// asked for, and a link that leads nowhere has its own time. 0 when not asked for.
    std::uint64_t time = 0;
};

/// The operations on folders and entries; part of the replaceable table of disk operations.
struct CKvFolderOperations
{
    /// Gives the entries of a folder in ascending order of their names' bytes, without "." and
    /// "..", and without names that hold a '\', since no path can lead to those.
    ///
    /// Errors: false when the folder cannot be opened or read to its end; \a entries is then empty.
    bool (*list)(const char* path, bool withTimes, std::vector<CKvFolderEntry>& entries);

    /// The later of a file's creation and last write. The last write alone where the system keeps
    /// no creation time. Links are followed.
    ///
    /// Units:  100 ns since the beginning of 1601, UTC.
    /// Errors: false for a folder and when the file is absent or may not be read.
    bool (*fileTime)(const char* path, std::uint64_t& time);

    /// Creates one folder. True when it is there afterwards, made by this call or not.
    bool (*create)(const char* path);

    /// Removes a folder; false unless it is one and empty.
    bool (*remove)(const char* path);

    /// Removes an entry that is no folder; of a link, the link itself.
    bool (*removeFile)(const char* path);

    /// Makes \a target a link with the text of the link \a source, in one step. What is there and
    /// no folder is replaced.
    ///
    /// Errors: false when source is no link or the system refuses; target is then as it was.
    bool (*copyLink)(const char* source, const char* target);

    /// Gives an open file the permission bits (never set-user, set-group or sticky) and the
    /// last-write time of another; pending writes are flushed first, as they would move the
    /// time. What is no plain file keeps its own, and so does a file whose owner or disk refuses.
    ///
    /// Errors: false when the flush or the system failed.
    bool (*takeOverAttributes)(std::FILE* source, std::FILE* target);

    /// Lets the owner write to a plain file, for disks on which that decides whether the file can
    /// be removed. A file that has other names too is left alone. Best effort.
    void (*clearReadOnly)(const char* path);
};

/// The folder operations of the table in use.
inline const CKvFolderOperations& KvPlatformFolders()
{
    return *KvPlatformDisk().folders;
}

/// True when this entry itself is a link.
bool KvPlatformIsLink(const char* path);

/// True when \a source is a plain file, links followed, and \a target is absent or not that file.
bool KvPlatformCanCopyFile(const char* source, const char* target);
