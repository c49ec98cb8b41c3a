// The one writer of files that are rewritten whole. The new content goes to a temporary file beside
// the target and is moved over it when complete, so a failed or killed run leaves the old file as
// it was. Links are followed and the old file's mode and owner stay; what cannot be replaced that
// way (devices, pipes, files with other hard links, folders that take no new file) is written
// directly.

#pragma once

#include "file/KvFileHandle.h"
#include "platform/KvPlatform.h"

/// Who may read a file that was not there before.
enum class EKvNewFileAccess
{
    /// Whom the process lets read its files.
    Default,
    /// Its owner alone: for files with secrets.
    OwnerOnly
};

class CKvWholeFileWriter
{
public:
    CKvWholeFileWriter() = default;
    CKvWholeFileWriter(const CKvWholeFileWriter&) = delete;
    CKvWholeFileWriter& operator=(const CKvWholeFileWriter&) = delete;

    /// Discards what was not committed.
    ~CKvWholeFileWriter();

    /// Starts the new content; \a mode is WriteBinary or WriteText.
    ///
    /// Errors: ModeNotAllowed, AlreadyOpen, or NotOpened; the target is then as it was.
    [[nodiscard]] EKvFileSystemError Open(const TKvString<char>& path, EKvFileSystemOpenMode mode,
                                          EKvNewFileAccess access = EKvNewFileAccess::Default);

    /// The handle to write to; null while nothing is open.
    ///
    /// Ownership: the writer's; never close it.
    CKvFileHandle* GetHandle() const { return m_handle; }

    /// Whether the target is of those that are written directly, once it is open.
    bool WritesDirectly() const { return m_direct; }

    /// Completes the file.
    ///
    /// Errors: CloseFailed when nothing is open, any write failed or the system refuses; the target
    ///         is then as it was, unless it could only be written directly.
    [[nodiscard]] EKvFileSystemError Commit();

private:
    CKvFileHandle* m_handle = nullptr;
    bool m_direct = false;
    CKvReplacement m_replacement;
};

/// Writes bytes that are all there as a whole file.
///
/// Errors: those of CKvWholeFileWriter; the file is then as it was.
[[nodiscard]] EKvFileSystemError KvWriteWholeFile(const TKvString<char>& path, const void* bytes,
                                                  int size);
