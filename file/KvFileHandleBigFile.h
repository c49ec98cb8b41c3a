// Handles of archive members. Only CKvBigFile makes them.

#pragma once

#include <cstdint>

#include "file/KvFileHandle.h"

class CKvBigFile;
class CKvBigFileEntry;

/// A place in one member. When its archive closes, the handle loses owner and entry: it can then be
/// closed, and every read gives 0.
///
/// Virtual functions and fields stand in the documented order.
class CKvFileHandleBigFile : public CKvFileHandle
{
public:
    ~CKvFileHandleBigFile() override;
    EType GetType() const override { return EType::Archive; }

    /// The member's stored name; empty once the archive is closed.
    const TKvString<char>& GetName() const override;
    EKvFileSystemOpenMode GetOpenMode() const override { return m_openMode; }

    /// The member's size in bytes as its archive states it; 0 once the archive is closed, and for a
    /// member of 2 GiB or more.
    virtual int GetSize() const;

    /// True when the archive is open and has all the bytes that it states of the member.
    bool IsInArchive() const;

    /// Null once the archive is closed.
    CKvBigFile* GetOwner() const { return m_owner; }

    /// Bytes from the start of the member; may be negative or beyond its end.
    int GetPos() const { return m_position; }

private:
    friend class CKvBigFile;
    friend class CKvFileSystemUnCached;

    /// Joins the owner's list of open handles.
    CKvFileHandleBigFile(CKvBigFile& owner, CKvBigFileEntry& entry);

    /// Leaves the owner's list, if it is in one.
    void Detach();

    /// Sums beyond the range of int stop at its ends, where no member has data.
    void SetPos(std::int64_t position);

    CKvBigFile* m_owner;
    CKvBigFileEntry* m_entry;
    EKvFileSystemOpenMode m_openMode = EKvFileSystemOpenMode::ReadBinary;
    int m_position = 0;

    CKvFileHandleBigFile* m_previous = nullptr;
    CKvFileHandleBigFile* m_next = nullptr;
};
