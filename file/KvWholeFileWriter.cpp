#include "file/KvWholeFileWriter.h"

#include <memory>

#include "file/KvFileHandleStd.h"
#include "file/KvFileSystemUnCached.h"

using EError = EKvFileSystemError;
using EMode = EKvFileSystemOpenMode;

CKvWholeFileWriter::~CKvWholeFileWriter()
{
    if (m_handle == nullptr)
        return;
    CKvFileSystemUnCached::Close(m_handle);
    if (!m_direct)
        KvPlatformDisk().discardReplacement(m_replacement);
}

EError CKvWholeFileWriter::Open(const TKvString<char>& path, EMode mode, EKvNewFileAccess access)
{
    if (m_handle != nullptr)
        return EError::AlreadyOpen;
    if (mode != EMode::WriteBinary && mode != EMode::WriteText)
        return EError::ModeNotAllowed;

    std::unique_ptr<CKvFileHandleStdPC> file(new CKvFileHandleStdPC(path, mode));
    const bool isPrivate = access == EKvNewFileAccess::OwnerOnly;
    const char streamMode[] = {'w', mode == EMode::WriteText ? 't' : 'b', isPrivate ? 'p' : '\0',
                               '\0'};
    const CKvDiskOperations& disk = KvPlatformDisk();
    const EKvReplacementStatus status =
        disk.beginReplacement(path.GetText(), streamMode, m_replacement);
    if (status == EKvReplacementStatus::Failed)
        return EError::NotOpened;
    m_direct = status == EKvReplacementStatus::WriteDirectly;
    file->m_stream = m_direct ? disk.openStream(path.GetText(), streamMode) : m_replacement.stream;
    if (file->m_stream == nullptr)
        return EError::NotOpened;
    m_handle = file.release();
    return EError::Success;
}

EError CKvWholeFileWriter::Commit()
{
    if (m_handle == nullptr)
        return EError::CloseFailed;
    const bool complete = CKvFileSystemUnCached::Close(m_handle) == EError::Success;
    if (m_direct)
        return complete ? EError::Success : EError::CloseFailed;
    if (complete && KvPlatformDisk().commitReplacement(m_replacement))
        return EError::Success;
    KvPlatformDisk().discardReplacement(m_replacement);
    return EError::CloseFailed;
}

EError KvWriteWholeFile(const TKvString<char>& path, const void* bytes, int size)
{
    CKvWholeFileWriter writer;
    const EError error = writer.Open(path, EMode::WriteBinary);
    if (error != EError::Success)
        return error;
    CKvFileSystemUnCached::Write(writer.GetHandle(), bytes, size);
    return writer.Commit();  // tells of failed writes too
}
