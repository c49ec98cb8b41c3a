// Whole directory trees: emptied and copied. Each item is told on standard output
// before it is tried, whatever comes of it.
//
// A tree is what KvEnumerateDirectory() lists. Links are items of it: they are removed and copied
// as links, and no tree is left through one. Names that a listing passes over stay where they are.

#pragma once

#include "core/KvString.h"

/// Removes all that is below \a dir, which itself stays; "Deleting PATH" is printed for each item,
/// files first, then the directories from the last to the first.
///
/// \a clearAttributes lets the owner write to each file first, for disks that keep others. An empty
/// path names no tree: nothing is removed.
///
/// Errors: always true. What cannot be removed stays, and the rest goes on.
bool KvRemoveDirectoryRecursively(const TKvString<char>& dir, bool clearAttributes);

/// Copies all that is below \a source to the same place below \a destination, a directory that must
/// be there. "Creating PATH" is printed for each directory, then "Copying PATH" for each file, with
/// the paths that they get. New directories have the permissions of any new one.
///
/// All is listed before anything is copied, so a tree can be copied into itself. Files are copied
/// as KvCopyFile() does and replace what is there; a link that stands where a directory or file of
/// the copy belongs is removed first, so that nothing is written to where it leads. An empty path
/// names no tree: nothing is copied.
///
/// Errors: always true. What cannot be copied is missing, or as it was, and the rest goes on.
bool CopyRecursively(TKvString<char> source, TKvString<char> destination);
