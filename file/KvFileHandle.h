// What is open: the base of all file handles, with the codes that the file layer speaks in.
// CKvFileSystemUnCached creates handles, works on them and destroys them.

#pragma once

#include "core/KvString.h"

enum class EKvFileSystemOpenMode : int
{
    None = 0,
    ReadBinary = 1,
    WriteBinary = 2,
    AppendBinary = 3,
    ReadText = 4,
    WriteText = 5,
    AppendText = 6
};

enum class EKvFileSystemError : int
{
    Success = 0,
    ArchiveNotOpened = 1,
    ModeNotAllowed = 2,
    AlreadyOpen = 3,
    /// Nothing to close, or the close failed: what was written may not be there.
    CloseFailed = 4,
    NotOpened = 5,
    NoHandle = 6,
    /// A read failed or came short.
    ReadFailed = 7,
    /// A write failed or came short.
    WriteFailed = 8,
    /// The handle is busy with another asynchronous operation.
    Busy = 10,
    NotSupported = 13
};

/// Virtual functions stand in the documented slot order.
class CKvFileHandle
{
public:
    enum class EType : int
    {
        Disk = 0,
        Cached = 1,
        Archive = 2
    };

    enum class EStatus : int
    {
        Idle = 0,
        Reading = 1,
        Writing = 2
    };

    virtual ~CKvFileHandle();
    virtual EType GetType() const = 0;
    virtual const TKvString<char>& GetName() const = 0;
    virtual EKvFileSystemOpenMode GetOpenMode() const = 0;

    CKvFileHandle(const CKvFileHandle&) = delete;
    CKvFileHandle& operator=(const CKvFileHandle&) = delete;

    EStatus GetStatus() const { return m_status; }
    void SetStatus(EStatus status) { m_status = status; }

protected:
    CKvFileHandle() = default;

private:
    EStatus m_status = EStatus::Idle;
};
