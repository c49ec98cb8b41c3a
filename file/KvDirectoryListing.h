// Lists of what lies in a directory and below it.
//
// Every listing follows these rules:
// - Paths in results are the directory as given, a backslash and the name.
// - Within a directory, names come in ascending order of their bytes, on every system, so runs are
//   repeatable. "." and ".." are never listed.
// - A symbolic link is listed with the files, whatever it leads to, and never entered; so a listing
//   stays in its tree and ends. The directory that is asked for may itself be reached by links.
// - Names that hold a backslash are passed over: no path can lead to them.
// - Results are appended to what the arrays hold. A directory that cannot be read adds nothing, and
//   the result is true all the same.
//
// Cost: linear in the length of the results; no recursion.

#pragma once

#include "core/KvArray.h"
#include "core/KvString.h"
#include "file/KvFileTime.h"

/// One listed file. Fields stand in the documented order.
struct KvFindFile
{
    /// With its path.
    TKvString<char> name;

    /// As KvGetFileTime() gives it, though also for a file that may not be read.
    FILETIME time;

    /// By time; the names play no part.
    bool operator<(const KvFindFile& other) const
    {
        return KvFileTimeToCount(time) < KvFileTimeToCount(other.time);
    }
};

/// Lists the directories in \a dir; a backslash at its end is not doubled.
bool KvRetrieveDirectoriesFromDirectory(const TKvString<char>& dir, CKvArray<TKvString<char>>& out);

/// Lists the files in \a dir; a backslash at its end is not doubled. Unless \a extensions is empty,
/// a file must have one of them: the text behind the last '.' of its name, in the same letter case.
bool KvRetrieveFilesFromDirectory(const TKvString<char>& dir, CKvArray<TKvString<char>>& out,
                                  const CKvArray<TKvString<char>>& extensions);

/// Lists all directories below \a dir: those in it first, then the descendants of each in turn, in
/// the same way.
bool KvRetrieveDirectoriesFromDirectoryRecursive(const TKvString<char>& dir,
                                                 CKvArray<TKvString<char>>& out);

/// Lists the files in \a dir, then those in each directory below it, in the order of
/// KvRetrieveDirectoriesFromDirectoryRecursive().
bool KvRetrieveFilesFromDirectoryRecursive(const TKvString<char>& dir,
                                           CKvArray<TKvString<char>>& out,
                                           const CKvArray<TKvString<char>>& extensions);

/// Lists all directories below \a dir depth first, each before what it contains. Directories with
/// an \a excluded name (letter case does not count) are passed over with all that is below them;
/// null excludes none. A backslash is always put behind dir.
bool KvEnumerateDirectory(const TKvString<char>& dir, CKvArray<TKvString<char>>& directories,
                          const CKvArray<TKvString<char>>* excluded);

/// The same, with the files of each directory in their turn among its directories.
bool KvEnumerateDirectory(const TKvString<char>& dir, CKvArray<KvFindFile>& files,
                          CKvArray<TKvString<char>>& directories,
                          const CKvArray<TKvString<char>>* excluded);

/// Lists the files in \a dir alone.
bool KvEnumerateDirectory(const TKvString<char>& dir, CKvArray<KvFindFile>& files);
