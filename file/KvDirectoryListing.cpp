#include "file/KvDirectoryListing.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/KvText.h"
#include "platform/KvPlatformFolders.h"

namespace {

using Texts = CKvArray<TKvString<char>>;
using Entries = std::vector<CKvFolderEntry>;

/// A directory on the way down, with what is left to look at in it.
struct CVisit
{
    /// With a separator at its end.
    std::string path;
    Entries entries;
    std::size_t next = 0;
};

/// None when the directory cannot be read.
Entries List(const std::string& path, bool withTimes = false)
{
    Entries entries;
    KvPlatformFolders().list(path.c_str(), withTimes, entries);
    return entries;
}

std::string WithSeparator(const TKvString<char>& dir)
{
    std::string path(dir.GetText());
    if (!path.ends_with('\\'))
        path += '\\';
    return path;
}

TKvString<char> Join(const std::string& path, const CKvFolderEntry& entry)
{
    return TKvString<char>((path + entry.name).c_str());
}

bool HasExtension(std::string_view name, const Texts& extensions)
{
    if (extensions.IsEmpty())
        return true;
    const std::size_t dot = name.rfind('.');
    const std::string_view extension =
        dot != std::string_view::npos ? name.substr(dot + 1) : std::string_view();
    return std::any_of(extensions.begin(), extensions.end(), [&](const TKvString<char>& wanted) {
        return extension == wanted.GetText();
    });
}

bool IsExcluded(const CKvFolderEntry& folder, const Texts* excluded)
{
    return excluded != nullptr &&
           std::any_of(excluded->begin(), excluded->end(), [&](const TKvString<char>& name) {
               return kvStrcmpNoCase(folder.name.c_str(), name.GetText()) == 0;
           });
}

void AddFile(CKvArray<KvFindFile>& files, const std::string& path, const CKvFolderEntry& entry)
{
    files.Add({Join(path, entry), KvCountToFileTime(entry.time)});
}

/// Enumerates a tree; null \a files are not wanted.
void Walk(std::string path, CKvArray<KvFindFile>* files, Texts& directories, const Texts* excluded)
{
    const bool withTimes = files != nullptr;
    std::vector<CVisit> visits;
    visits.push_back({path, List(path, withTimes)});
    while (!visits.empty()) {
        CVisit& visit = visits.back();
        if (visit.next == visit.entries.size()) {
            visits.pop_back();
            continue;
        }
        const CKvFolderEntry& entry = visit.entries[visit.next++];
        if (entry.kind != EKvEntryKind::Folder) {
            if (files != nullptr)
                AddFile(*files, visit.path, entry);
        } else if (!IsExcluded(entry, excluded)) {
            path = visit.path + entry.name;
            directories.Add(path.c_str());
            path += '\\';
            visits.push_back({path, List(path, withTimes)});
        }
    }
}

}  // namespace

bool KvRetrieveDirectoriesFromDirectory(const TKvString<char>& dir, Texts& out)
{
    const std::string path = WithSeparator(dir);
    for (const CKvFolderEntry& entry : List(path))
        if (entry.kind == EKvEntryKind::Folder)
            out.Add(Join(path, entry));
    return true;
}

bool KvRetrieveFilesFromDirectory(const TKvString<char>& dir, Texts& out, const Texts& extensions)
{
    const std::string path = WithSeparator(dir);
    for (const CKvFolderEntry& entry : List(path))
        if (entry.kind != EKvEntryKind::Folder && HasExtension(entry.name, extensions))
            out.Add(Join(path, entry));
    return true;
}

bool KvRetrieveDirectoriesFromDirectoryRecursive(const TKvString<char>& dir, Texts& out)
{
    std::vector<TKvString<char>> pending = {dir};
    while (!pending.empty()) {
        const TKvString<char> next = std::move(pending.back());
        pending.pop_back();
        const int first = out.GetCount();
        KvRetrieveDirectoriesFromDirectory(next, out);
        for (int i = out.GetCount() - 1; i >= first; --i)
            pending.push_back(out[i]);
    }
    return true;
}

bool KvRetrieveFilesFromDirectoryRecursive(const TKvString<char>& dir, Texts& out,
                                           const Texts& extensions)
{
    Texts directories;
    directories.Add(dir);
    KvRetrieveDirectoriesFromDirectoryRecursive(dir, directories);
    for (const TKvString<char>& directory : directories)
        KvRetrieveFilesFromDirectory(directory, out, extensions);
    return true;
}

bool KvEnumerateDirectory(const TKvString<char>& dir, Texts& directories, const Texts* excluded)
{
    Walk(std::string(dir.GetText()) + '\\', nullptr, directories, excluded);
    return true;
}

bool KvEnumerateDirectory(const TKvString<char>& dir, CKvArray<KvFindFile>& files,
                          Texts& directories, const Texts* excluded)
{
    Walk(std::string(dir.GetText()) + '\\', &files, directories, excluded);
    return true;
}

bool KvEnumerateDirectory(const TKvString<char>& dir, CKvArray<KvFindFile>& files)
{
    const std::string path = std::string(dir.GetText()) + '\\';
    for (const CKvFolderEntry& entry : List(path, true))
        if (entry.kind != EKvEntryKind::Folder)
            AddFile(files, path, entry);
    return true;
}
