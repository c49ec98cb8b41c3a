#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>

#include "platform/KvHostPathPosix.h"
#include "platform/KvPlatform.h"

namespace {

int OpenFlags(const char* mode)
{
    switch (*mode) {
        case 'w':
            return O_WRONLY | O_CREAT | (std::strchr(mode, 'x') != nullptr ? O_EXCL : O_TRUNC);
        case 'a':
            return O_WRONLY | O_CREAT | O_APPEND;
        default:
            return O_RDONLY;
    }
}

/// The permissions of a file that \a mode makes.
mode_t NewFileMode(const char* mode)
{
    return std::strchr(mode, 'p') != nullptr ? 0600 : 0666;
}

std::FILE* OpenDescriptor(int descriptor, const char* mode)
{
    const char streamMode[] = {mode[0], mode[1], '\0'};
    return fdopen(descriptor, streamMode);
}

std::FILE* OpenStream(const char* path, const char* mode)
{
    const CKvHostPath host(KvToHostPath(path));
    const int descriptor =
        openat(host.Folder(), host.Rest(), OpenFlags(mode) | O_CLOEXEC, NewFileMode(mode));
    if (descriptor < 0)
        return nullptr;
    // A folder opens for reading, but has no bytes.
    struct stat status = {};
    const bool hasBytes =
        *mode != 'r' || (fstat(descriptor, &status) == 0 && !S_ISDIR(status.st_mode));
    std::FILE* stream = hasBytes ? OpenDescriptor(descriptor, mode) : nullptr;
    if (stream == nullptr)
        close(descriptor);
    return stream;
}

std::size_t ReadStream(std::FILE* stream, void* buffer, std::size_t sizeBytes)
{
    return std::fread(buffer, 1, sizeBytes, stream);
}

std::size_t ReadStreamAt(std::FILE* stream, std::int64_t offsetBytes, void* buffer,
                         std::size_t sizeBytes)
{
    std::size_t total = 0;
    while (total < sizeBytes) {
        const ssize_t count =
            pread(fileno(stream), static_cast<char*>(buffer) + total, sizeBytes - total,
                  static_cast<off_t>(offsetBytes + static_cast<std::int64_t>(total)));
        if (count == 0 || (count < 0 && errno != EINTR))
            break;
        if (count > 0)
            total += static_cast<std::size_t>(count);
    }
    return total;
}

std::size_t WriteStream(std::FILE* stream, const void* data, std::size_t sizeBytes)
{
    return std::fwrite(data, 1, sizeBytes, stream);
}

bool SeekStream(std::FILE* stream, std::int64_t offsetBytes, EKvSeekOrigin origin)
{
    int whence = SEEK_SET;
    if (origin == EKvSeekOrigin::Current)
        whence = SEEK_CUR;
    else if (origin == EKvSeekOrigin::End)
        whence = SEEK_END;
    return fseeko(stream, offsetBytes, whence) == 0;
}

std::int64_t TellStream(std::FILE* stream)
{
    return ftello(stream);
}

bool CloseStream(std::FILE* stream)
{
    // fclose reports its own last flush alone: what failed earlier shows in the error state only.
    const bool intact = std::ferror(stream) == 0;
    return std::fclose(stream) == 0 && intact;
}

/// Creates a file that was not there, beside \a target. Gives the descriptor or -1 with errno set.
int CreateTemporary(const std::string& target, mode_t mode, std::string& temporaryPath)
{
    for (int attempt = 0; attempt < kKvTemporaryNameTries; ++attempt) {
        temporaryPath = KvTemporaryPathBeside(target);
        const CKvHostPath path(temporaryPath);
        const int descriptor =
            openat(path.Folder(), path.Rest(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (descriptor >= 0 || errno != EEXIST)
            return descriptor;
    }
    return -1;
}

/// True when nothing but a plain rewrite in place keeps what \a path is: see WriteDirectly.
bool NeedsDirectWrite(const CKvHostPath& target, bool exists, const struct stat& status)
{
    if (!exists)
        return *target.Rest() == '\0';
    return !S_ISREG(status.st_mode) || status.st_nlink > 1 ||
           faccessat(target.Folder(), target.Rest(), W_OK, AT_EACCESS) != 0;
}

/// Resolves links in \a path. False when the path is a link whose target is not there, or the
/// system cannot tell.
bool FollowLinks(std::string& path)
{
    const CKvHostPath link(path);
    struct stat status = {};
    if (fstatat(link.Folder(), link.Rest(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return KvWasRefused();
    if (!S_ISLNK(status.st_mode))
        return true;
    const std::unique_ptr<char, decltype(&std::free)> resolved(realpath(path.c_str(), nullptr),
                                                               &std::free);
    if (resolved == nullptr)
        return false;
    path = resolved.get();
    return true;
}

void RemoveTemporary(const std::string& path)
{
    const CKvHostPath temporary(path);
    unlinkat(temporary.Folder(), temporary.Rest(), 0);
}

/// Gives the temporary the owner and mode of the file that it replaces.
bool TakeOver(int descriptor, const struct stat& old)
{
    struct stat created = {};
    if (fstat(descriptor, &created) != 0)
        return false;
    const bool sameOwner = created.st_uid == old.st_uid && created.st_gid == old.st_gid;
    if (!sameOwner && fchown(descriptor, old.st_uid, old.st_gid) != 0)
        return false;
    return fchmod(descriptor, old.st_mode & 07777) == 0;
}

/// What the folder, the name or the owner forbids is no failure of the system.
EKvReplacementStatus StatusAfterFailure()
{
    return KvWasRefused() ? EKvReplacementStatus::WriteDirectly : EKvReplacementStatus::Failed;
}

EKvReplacementStatus BeginReplacement(const char* path, const char* mode,
                                      CKvReplacement& replacement)
{
    replacement.targetPath = KvToHostPath(path);
    if (!FollowLinks(replacement.targetPath))
        return StatusAfterFailure();
    const CKvHostPath target(replacement.targetPath);
    struct stat old = {};
    const bool exists = fstatat(target.Folder(), target.Rest(), &old, 0) == 0;
    if (!exists && !KvWasRefused())
        return EKvReplacementStatus::Failed;
    if (NeedsDirectWrite(target, exists, old))
        return EKvReplacementStatus::WriteDirectly;

    // Until it has the old file's mode, nobody else may open what will hold its content.
    const int descriptor = CreateTemporary(
        replacement.targetPath, exists ? 0600 : NewFileMode(mode), replacement.temporaryPath);
    if (descriptor < 0)
        return StatusAfterFailure();
    if (exists && !TakeOver(descriptor, old)) {
        const EKvReplacementStatus status = StatusAfterFailure();
        close(descriptor);
        RemoveTemporary(replacement.temporaryPath);
        return status;
    }
    replacement.stream = OpenDescriptor(descriptor, mode);
    if (replacement.stream == nullptr) {
        close(descriptor);
        RemoveTemporary(replacement.temporaryPath);
        return EKvReplacementStatus::Failed;
    }
    return EKvReplacementStatus::Begun;
}

bool CommitReplacement(const CKvReplacement& replacement)
{
    const CKvHostPath temporary(replacement.temporaryPath);
    const CKvHostPath target(replacement.targetPath);
    return renameat(temporary.Folder(), temporary.Rest(), target.Folder(), target.Rest()) == 0;
}

void DiscardReplacement(const CKvReplacement& replacement)
{
    RemoveTemporary(replacement.temporaryPath);
}

constexpr CKvDiskOperations kHostDisk = {OpenStream,         ReadStream,       ReadStreamAt,
                                         WriteStream,        SeekStream,       TellStream,
                                         CloseStream,        BeginReplacement, CommitReplacement,
                                         DiscardReplacement, &kKvHostFolders};

const CKvDiskOperations* s_disk = &kHostDisk;

void DefaultDebugOutput([[maybe_unused]] const char* line)
{
#ifndef NDEBUG
    std::fputs(line, stderr);
#endif
}

void (*s_debugOutput)(const char* line) = &DefaultDebugOutput;

}  // namespace

const CKvDiskOperations& KvPlatformDisk()
{
    return *s_disk;
}

const CKvDiskOperations& KvPlatformHostDisk()
{
    return kHostDisk;
}

void KvPlatformSetDisk(const CKvDiskOperations* operations)
{
    s_disk = operations != nullptr ? operations : &kHostDisk;
}

bool KvPlatformFileExists(const char* path)
{
    const CKvHostPath host(KvToHostPath(path));
    struct stat status = {};
    return fstatat(host.Folder(), host.Rest(), &status, 0) == 0 && !S_ISDIR(status.st_mode);
}

CKvLocalTime KvPlatformLocalTime()
{
    const std::time_t now = std::time(nullptr);
    std::tm local = {};
    if (now == static_cast<std::time_t>(-1) || localtime_r(&now, &local) == nullptr)
        return {};
    return {local.tm_hour, local.tm_min, local.tm_sec};
}

std::uint64_t KvPlatformRandomSeed()
{
    std::uint64_t seed = 0;
    if (getrandom(&seed, sizeof seed, GRND_NONBLOCK) == static_cast<ssize_t>(sizeof seed))
        return seed;
    return static_cast<std::uint64_t>(std::time(nullptr)) ^
           (static_cast<std::uint64_t>(getpid()) << 32);
}

void KvPlatformDebugOutput(const char* line)
{
    s_debugOutput(line);
}

void KvPlatformSetDebugOutput(void (*sink)(const char* line))
{
    s_debugOutput = sink != nullptr ? sink : &DefaultDebugOutput;
}

void KvPlatformIgnoreBrokenPipes()
{
    std::signal(SIGPIPE, SIG_IGN);
}
