// The static file system: opens, reads, writes, seeks and closes any handle. A null handle never
// does harm. Sizes and positions are ints; a file of 2 GiB or more has size 0 and no position.

#pragma once

#include <cstdint>

#include "core/KvArray.h"
#include "file/KvFileHandle.h"

class CKvBigFile;
enum class EKvSeekOrigin;

/// Functions over handles; there are no objects of it. Nothing is cached but what the streams of
/// the host buffer.
class CKvFileSystemUnCached
{
public:
    CKvFileSystemUnCached() = delete;

    /// Opens a disk file, or a member of an archive in its place. Writing truncates, appending
    /// creates.
    ///
    /// \a useBigFiles asks that the registered archives be searched for the path, in any letter
    /// case, before the disk when reading.
    /// Ownership: \a handle is Close()'s to destroy; it is null after a failure.
    /// Errors:    ModeNotAllowed for a mode outside 1 to 6; NotOpened when the file is absent,
    ///            refused or a folder.
    [[nodiscard]] static EKvFileSystemError Open(CKvFileHandle*& handle,
                                                 const TKvString<char>& path,
                                                 EKvFileSystemOpenMode mode, bool useBigFiles);

    /// Closes and destroys the handle and makes it null.
    ///
    /// Errors: NoHandle for null; CloseFailed when closing or any write before it failed, and for a
    ///         cached handle, which closes itself and stays.
    static EKvFileSystemError Close(CKvFileHandle*& handle);

    /// Gives the bytes read: fewer than \a size at the end of the file or after a failure. Of a
    /// member, also those count that its archive does not have or the disk does not give: they are
    /// zero, and AsyncRead() tells.
    [[nodiscard]] static int Read(CKvFileHandle* handle, void* buffer, int size);

    /// Reads at a place given in bytes from the start, without moving the position and past what is
    /// buffered, of a disk file that is open for reading. Gives the bytes read, 0 for other
    /// handles.
    [[nodiscard]] static int ReadAt(CKvFileHandle* handle, std::int64_t offset, void* buffer,
                                    int size);

    /// Gives \a size, or 0 when the write failed; the failure also shows when the handle is closed.
    /// Bytes that were accepted may still get lost: only Close() tells.
    static int Write(CKvFileHandle* handle, const void* data, int size);

    /// Bytes from the start; -1 without handle or when the stream has no such position.
    static int GetPos(CKvFileHandle* handle);

    /// True for a handle that can have a position, whether or not the seek itself succeeded.
    /// From the end of an archive member offsets count backwards: 10 is ten bytes before its end.
    static bool SeekFromStart(CKvFileHandle* handle, int offset);
    static bool SeekFromCurrent(CKvFileHandle* handle, int offset);
    static bool SeekFromEnd(CKvFileHandle* handle, int offset);

    /// Bytes in the file; 0 without handle, for a stream without size and for 2 GiB or more.
    static int GetSize(CKvFileHandle* handle);

    /// Gives the size of a file that is to be read whole, and moves to its start. Unlike GetSize()
    /// this tells an empty file from one whose size is unknown, and takes no archive's word for the
    /// size of a member.
    ///
    /// Errors: false, and \a size 0, for what GetSize() gives 0 without being empty, for a member
    ///         that does not lie in its archive to its last byte, and when the disk fails.
    [[nodiscard]] static bool MeasureWhole(CKvFileHandle* handle, int& size);

    /// True when something that is no folder has this path.
    static bool Exists(const TKvString<char>& path);

    /// Reads before it returns.
    ///
    /// Errors: NoHandle, Busy, or ReadFailed when fewer bytes came.
    static EKvFileSystemError AsyncRead(CKvFileHandle* handle, void* buffer, int size);

    /// Writes before it returns. Nothing is written to an archive member, which is no error.
    ///
    /// Errors: NoHandle, Busy, or WriteFailed.
    static EKvFileSystemError AsyncWrite(CKvFileHandle* handle, const void* data, int size);

    /// Nothing is ever pending.
    static EKvFileSystemError AsyncWait(CKvFileHandle*) { return EKvFileSystemError::Success; }

    /// Registers an archive, for the rest of the process, behind those that are registered.
    ///
    /// Errors: false when this very path is registered already or the archive does not open.
    [[nodiscard]] static bool AddBigFile(const TKvString<char>& path);

    /// When set, every later write to a disk file has its bytes reversed in words of four; bytes
    /// behind the last whole word of a write stay as given. Process-wide.
    static void SetSwapDWORDOnWrite(bool swap) { m_bSwapDWORDOnWrite = swap; }
    static bool GetSwapDWORDOnWrite() { return m_bSwapDWORDOnWrite; }

private:
    static bool Seek(CKvFileHandle* handle, int offset, EKvSeekOrigin origin);

    /// Reads from a member and moves its position; \a complete tells whether the disk gave all
    /// bytes that the result counts.
    static int ReadMember(CKvFileHandle* handle, void* buffer, int size, bool& complete);

    /// Null until an archive is registered; never destroyed, so that it serves static objects too.
    static CKvArray<CKvBigFile*>* m_aBigFile;
    static bool m_bSwapDWORDOnWrite;
};
