// An archive that is open for reading. Its table is in memory, its members are served as file
// handles, so that they stand wherever a disk file is asked for.

#pragma once

#include <cstdint>
#include <memory>

#include "file/KvBigFileFAT.h"
#include "file/KvFile.h"
#include "file/KvReadAhead.h"

class CKvFileHandleBigFile;

/// Archives are at most INT_MAX bytes. Handles may outlive the archive and its closing: their reads
/// then give 0, and closing them works.
class CKvBigFile
{
public:
    CKvBigFile() = default;
    CKvBigFile(const CKvBigFile&) = delete;
    CKvBigFile& operator=(const CKvBigFile&) = delete;

    /// Detaches the handles that are still open.
    virtual ~CKvBigFile();

    /// Opens the archive and reads its table.
    ///
    /// Errors: ModeNotAllowed for modes 2 to 6, before all else: archives are read as bytes alone.
    ///         ArchiveNotOpened for modes that are none, when the file cannot be opened or
    ///         its table cannot be what it says (see CKvBigFileFAT::SerialFrom()), and when the
    ///         archive is open already, which it then stays.
    [[nodiscard]] EKvFileSystemError Open(const TKvString<char>& path, EKvFileSystemOpenMode mode);

    /// Closes the archive and detaches the handles that are still open.
    ///
    /// Errors: CloseFailed when the archive is not open or the system reports an error; it is
    ///         closed afterwards in any case.
    EKvFileSystemError Close();

    /// Opens the first member whose CRC is that of \a name, in any letter case.
    ///
    /// Ownership: the handle is FileClose()'s or CKvFileSystemUnCached::Close()'s to destroy.
    /// Errors:    null when the archive is closed or has no such member.
    /// Cost:      constant in the number of members.
    CKvFileHandle* FileOpen(const TKvString<char>& name);

    /// Opens the member at \a index; null when there is none. Ownership: as FileOpen().
    CKvFileHandle* FileOpenByIndex(int index);

    /// Closes and destroys a handle of this archive, or one of a closed archive, and makes it null.
    ///
    /// Errors: false for any other handle, which stays.
    bool FileClose(CKvFileHandle*& handle);

    /// Reads from the handle's position, which it leaves where it is.
    ///
    /// Gives \a size, less where the member ends, 0 where the archive does. Bytes that the archive
    /// does not have or the disk does not give are zero.
    [[nodiscard]] int FileRead(CKvFileHandle* handle, void* buffer, int size);

    /// Reads before it returns; a size beyond the member's end is cut as by FileRead().
    ///
    /// Errors: ReadFailed for a position that is negative or past the member's end, and when fewer
    ///         bytes came than the member still has.
    EKvFileSystemError AsyncRead(CKvFileHandle* handle, void* buffer, int size);

    /// Archives are never written to: always NotSupported.
    EKvFileSystemError AsyncWrite(CKvFileHandle*, const void*, int)
    {
        return EKvFileSystemError::NotSupported;
    }

    /// Nothing is ever pending.
    EKvFileSystemError AsyncWait() { return m_file.AsyncWait(); }

    /// 0 while closed.
    int GetNumFiles() const;

    /// The CRC of the member at \a index; 0 when there is none.
    std::uint64_t GetFileNameCrcByIndex(int index) const;

    /// The stored name of the member at \a index; empty when there is none.
    TKvString<char> GetFileNameByIndex(int index) const;

    /// The path with which the archive was opened last.
    const TKvString<char>& GetName() const { return m_name; }

protected:
    /// Reads a table from the file's current position. Handles on the old one are detached.
    ///
    /// Errors: false, and the old table stays; see CKvBigFileFAT::SerialFrom().
    bool ReadFAT();

    /// Does nothing: archives are made by CKvBigFileGenerator.
    void WriteFAT() {}

private:
    friend class CKvFileHandleBigFile;
    friend class CKvFileSystemUnCached;

    /// The handle as one of this archive with a member behind it, or null.
    CKvFileHandleBigFile* AsOwnHandle(CKvFileHandle* handle) const;

    CKvFileHandle* OpenEntry(CKvBigFileEntry* entry);

    /// As FileRead(); \a complete tells whether the disk gave all of these bytes.
    int ReadMember(CKvFileHandle* handle, void* buffer, int size, bool& complete);

    void DetachHandles();

    // The first three in the documented order.
    CKvFile m_file;
    TKvString<char> m_name;
    std::unique_ptr<CKvBigFileFAT> m_fat;
    int m_archiveSize = 0;
    CKvReadAhead m_readAhead;
    CKvFileHandleBigFile* m_firstHandle = nullptr;
};
