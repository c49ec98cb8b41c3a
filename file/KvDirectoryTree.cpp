#include "file/KvDirectoryTree.h"

#include <cstdio>

#include "file/KvDirectoryListing.h"
#include "file/KvFileOperations.h"
#include "platform/KvPlatformFolders.h"

namespace {

void Tell(const char* deed, const TKvString<char>& path)
{
    std::printf("%s %s\n", deed, path.GetText());
    std::fflush(stdout);
}

/// Where \a path, which lies below \a source, comes to lie below \a destination.
TKvString<char> Rebase(const TKvString<char>& path, const TKvString<char>& source,
                       const TKvString<char>& destination)
{
    return destination + (path.GetText() + source.GetLength());
}

/// What is written to a path must not go where a link there leads.
void RemoveLink(const TKvString<char>& path)
{
    if (KvPlatformIsLink(path.GetText()))
        KvDeleteFile(path);
}

void CopyEntry(const TKvString<char>& source, const TKvString<char>& target)
{
    if (KvPlatformIsLink(source.GetText())) {
        KvPlatformFolders().copyLink(source.GetText(), target.GetText());
        return;
    }
    RemoveLink(target);
    KvCopyFile(source, target);
}

}  // namespace

bool KvRemoveDirectoryRecursively(const TKvString<char>& dir, bool clearAttributes)
{
    if (dir.IsEmpty())
        return true;
    CKvArray<KvFindFile> files;
    CKvArray<TKvString<char>> directories;
    KvEnumerateDirectory(dir, files, directories, nullptr);
    for (const KvFindFile& file : files) {
        Tell("Deleting", file.name);
        if (clearAttributes)
            KvPlatformFolders().clearReadOnly(file.name.GetText());
        KvDeleteFile(file.name);
    }
    for (int i = directories.GetCount() - 1; i >= 0; --i) {
        Tell("Deleting", directories[i]);
        KvRemoveDirectory(directories[i]);
    }
    return true;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the documented signature.
bool CopyRecursively(TKvString<char> source, TKvString<char> destination)
{
    if (source.IsEmpty() || destination.IsEmpty())
        return true;
    CKvArray<KvFindFile> files;
    CKvArray<TKvString<char>> directories;
    KvEnumerateDirectory(source, files, directories, nullptr);
    for (const TKvString<char>& directory : directories) {
        const TKvString<char> target = Rebase(directory, source, destination);
        RemoveLink(target);
        KvCreateDirectory(target);
        Tell("Creating", target);
    }
    for (const KvFindFile& file : files) {
        const TKvString<char> target = Rebase(file.name, source, destination);
        Tell("Copying", target);
        CopyEntry(file.name, target);
    }
    return true;
}
