// Single directories and files: created, removed, copied. Both separators are understood.

#pragma once

#include "core/KvString.h"

/// Creates one directory. True when it is there afterwards, made by this call or not.
bool KvCreateDirectory(const TKvString<char>& path);

/// Removes a directory. False unless it is one, no link, and empty.
bool KvRemoveDirectory(const TKvString<char>& path);

/// Removes a file. Of a link, the link itself; what it leads to stays.
bool KvDeleteFile(const TKvString<char>& path);

/// Copies a plain file with its permission bits and last-write time. A file that is there is
/// replaced when the copy is complete, as by CKvWholeFileWriter. Links are followed on both sides.
///
/// Errors: false, and the old destination as it was, when the source is no plain file or is the
///         destination itself, when reading or writing fails or memory is short. A destination that
///         can only be written in place (with other hard links, say) is not saved from a failure.
bool KvCopyFile(const TKvString<char>& source, const TKvString<char>& destination);

/// The same, but never over what is there: to keep a file under a second name.
///
/// Errors: false, and no new destination, when there is one already or as with KvCopyFile().
bool KvCopyFileToNew(const TKvString<char>& source, const TKvString<char>& destination);

/// Creates all directories of a path, the first component excepted: a drive, the root of a path
/// that begins with a separator, or the first directory of a relative path, which must be there.
/// In \a path itself, slashes become backslashes and one is put at the end unless one is there.
///
/// Errors: false at the first directory that cannot be created; those before it stay.
bool KvCreatePath(TKvString<char>& path);
