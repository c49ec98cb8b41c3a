#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>

#include "platform/KvHostPathPosix.h"
#include "platform/KvPlatformFolders.h"

namespace {

constexpr std::int64_t kSecondsFrom1601To1970 = 11'644'473'600;
constexpr std::int64_t kUnitsPerSecond = 10'000'000;
constexpr std::int64_t kNanosecondsPerUnit = 100;

struct CCloseFolder
{
    void operator()(DIR* folder) const { closedir(folder); }
};
using CFolder = std::unique_ptr<DIR, CCloseFolder>;

/// Moments before 1601 become 0, those that the count cannot hold its largest value.
std::uint64_t ToCount(const struct statx_timestamp& time)
{
    if (time.tv_sec < -kSecondsFrom1601To1970)
        return 0;
    const std::uint64_t seconds =
        static_cast<std::uint64_t>(time.tv_sec) + std::uint64_t{kSecondsFrom1601To1970};
    if (seconds >= UINT64_MAX / kUnitsPerSecond)
        return UINT64_MAX;
    return seconds * kUnitsPerSecond + time.tv_nsec / kNanosecondsPerUnit;
}

/// The later of creation and last write.
bool ReadTime(int folder, const char* name, int flags, std::uint64_t& time)
{
    struct statx status = {};
    if (statx(folder, name, flags, STATX_TYPE | STATX_MTIME | STATX_BTIME, &status) != 0 ||
        S_ISDIR(status.stx_mode))
        return false;
    time = ToCount(status.stx_mtime);
    if ((status.stx_mask & STATX_BTIME) != 0)
        time = std::max(time, ToCount(status.stx_btime));
    return true;
}

bool IsKind(const CKvHostPath& path, mode_t kind, int flags)
{
    struct stat status = {};
    return fstatat(path.Folder(), path.Rest(), &status, flags) == 0 &&
           (status.st_mode & S_IFMT) == kind;
}

EKvEntryKind KindOf(int folder, const dirent& entry)
{
    mode_t mode = static_cast<mode_t>(DTTOIF(entry.d_type));
    struct stat status = {};
    if (entry.d_type == DT_UNKNOWN &&
        fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0)
        mode = status.st_mode;
    if (S_ISDIR(mode))
        return EKvEntryKind::Folder;
    return S_ISLNK(mode) ? EKvEntryKind::Link : EKvEntryKind::Other;
}

bool IsListed(const char* name)
{
    return std::strcmp(name, ".") != 0 && std::strcmp(name, "..") != 0 &&
           std::strchr(name, '\\') == nullptr;
}

bool ReadEntries(DIR* folder, bool withTimes, std::vector<CKvFolderEntry>& entries)
{
    const int descriptor = dirfd(folder);
    for (;;) {
        errno = 0;
        const dirent* found = readdir(folder);
        if (found == nullptr)
            return errno == 0;
        if (!IsListed(found->d_name))
            continue;
        CKvFolderEntry entry = {found->d_name, KindOf(descriptor, *found), 0};
        const bool wantsTime = withTimes && entry.kind != EKvEntryKind::Folder;
        if (wantsTime && !ReadTime(descriptor, found->d_name, 0, entry.time))
            ReadTime(descriptor, found->d_name, AT_SYMLINK_NOFOLLOW, entry.time);
        entries.push_back(std::move(entry));
    }
}

bool List(const char* path, bool withTimes, std::vector<CKvFolderEntry>& entries)
{
    entries.clear();
    const CKvHostPath host(KvToHostPath(path));
    const int descriptor = openat(host.Folder(), host.Rest(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const CFolder folder(fdopendir(descriptor));
    if (folder == nullptr) {
        close(descriptor);
        return false;
    }
    if (!ReadEntries(folder.get(), withTimes, entries)) {
        entries.clear();
        return false;
    }
    std::sort(entries.begin(), entries.end(),
              [](const CKvFolderEntry& a, const CKvFolderEntry& b) { return a.name < b.name; });
    return true;
}

bool FileTime(const char* path, std::uint64_t& time)
{
    // The permission is asked for without opening, which would wait at pipes and wake devices.
    const CKvHostPath host(KvToHostPath(path));
    return faccessat(host.Folder(), host.Rest(), R_OK, AT_EACCESS) == 0 &&
           ReadTime(host.Folder(), host.Rest(), 0, time);
}

bool Create(const char* path)
{
    const CKvHostPath host(KvToHostPath(path));
    return mkdirat(host.Folder(), host.Rest(), 0777) == 0 || IsKind(host, S_IFDIR, 0);
}

bool Remove(const char* path)
{
    const CKvHostPath host(KvToHostPath(path));
    return unlinkat(host.Folder(), host.Rest(), AT_REMOVEDIR) == 0;
}

bool RemoveFile(const char* path)
{
    const CKvHostPath host(KvToHostPath(path));
    return unlinkat(host.Folder(), host.Rest(), 0) == 0;
}

/// The text of a link; empty when there is none to read.
std::string ReadLink(const CKvHostPath& path)
{
    constexpr std::size_t kUsualLength = 256;
    for (std::string text(kUsualLength, '\0');; text.resize(text.size() * 2)) {
        const ssize_t length = readlinkat(path.Folder(), path.Rest(), text.data(), text.size());
        if (length < 0)
            return {};
        if (static_cast<std::size_t>(length) < text.size())
            return text.substr(0, static_cast<std::size_t>(length));
    }
}

bool CopyLink(const char* source, const char* target)
{
    const std::string text = ReadLink(CKvHostPath(KvToHostPath(source)));
    if (text.empty())
        return false;
    const std::string targetPath = KvToHostPath(target);
    const CKvHostPath to(targetPath);
    for (int attempt = 0; attempt < kKvTemporaryNameTries; ++attempt) {
        const CKvHostPath temporary(KvTemporaryPathBeside(targetPath));
        if (symlinkat(text.c_str(), temporary.Folder(), temporary.Rest()) == 0) {
            if (renameat(temporary.Folder(), temporary.Rest(), to.Folder(), to.Rest()) == 0)
                return true;
            unlinkat(temporary.Folder(), temporary.Rest(), 0);
            return false;
        }
        if (errno != EEXIST)
            return false;
    }
    return false;
}

bool TakeOverAttributes(std::FILE* source, std::FILE* target)
{
    struct stat from = {};
    struct stat to = {};
    if (std::fflush(target) != 0 || fstat(fileno(source), &from) != 0 ||
        fstat(fileno(target), &to) != 0)
        return false;
    if (!S_ISREG(to.st_mode))
        return true;
    if (fchmod(fileno(target), from.st_mode & 0777) != 0 && !KvWasRefused())
        return false;
    const struct timespec times[2] = {{0, UTIME_OMIT}, from.st_mtim};
    return futimens(fileno(target), times) == 0 || KvWasRefused();
}

void ClearReadOnly(const char* path)
{
    const CKvHostPath host(KvToHostPath(path));
    struct stat status = {};
    if (fstatat(host.Folder(), host.Rest(), &status, AT_SYMLINK_NOFOLLOW) != 0 ||
        !S_ISREG(status.st_mode) || status.st_nlink > 1 || (status.st_mode & S_IWUSR) != 0)
        return;
    fchmodat(host.Folder(), host.Rest(), (status.st_mode & 07777) | S_IWUSR, AT_SYMLINK_NOFOLLOW);
}

}  // namespace

constexpr CKvFolderOperations kKvHostFolders = {
    List, FileTime, Create, Remove, RemoveFile, CopyLink, TakeOverAttributes, ClearReadOnly};

bool KvPlatformIsLink(const char* path)
{
    return IsKind(CKvHostPath(KvToHostPath(path)), S_IFLNK, AT_SYMLINK_NOFOLLOW);
}

bool KvPlatformCanCopyFile(const char* source, const char* target)
{
    const CKvHostPath sourcePath(KvToHostPath(source));
    const CKvHostPath targetPath(KvToHostPath(target));
    struct stat from = {};
    struct stat to = {};
    if (fstatat(sourcePath.Folder(), sourcePath.Rest(), &from, 0) != 0 || !S_ISREG(from.st_mode))
        return false;
    return fstatat(targetPath.Folder(), targetPath.Rest(), &to, 0) != 0 ||
           from.st_dev != to.st_dev || from.st_ino != to.st_ino;
}
