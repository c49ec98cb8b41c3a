#include "file/KvBigFile.h"

#include <algorithm>
#include <cstring>

#include "core/KvCrc64.h"
#include "file/KvFileHandleBigFile.h"

using EError = EKvFileSystemError;
using EMode = EKvFileSystemOpenMode;

CKvBigFile::~CKvBigFile()
{
    DetachHandles();
}

EError CKvBigFile::Open(const TKvString<char>& path, EMode mode)
{
    if (mode >= EMode::WriteBinary && mode <= EMode::AppendText)
        return EError::ModeNotAllowed;
    if (m_file.Open(path, mode, false) != EError::Success)
        return EError::ArchiveNotOpened;
    m_archiveSize = m_file.GetSize();
    if (!ReadFAT()) {
        m_file.Close();
        return EError::ArchiveNotOpened;
    }
    m_name = path;
    return EError::Success;
}

EError CKvBigFile::Close()
{
    DetachHandles();
    m_fat.reset();
    m_readAhead.Clear();
    return m_file.Close();
}

CKvFileHandle* CKvBigFile::FileOpen(const TKvString<char>& name)
{
    if (m_fat == nullptr)
        return nullptr;
    const auto length = static_cast<unsigned int>(name.GetLength());
    return OpenEntry(
        m_fat->FindEntry(CreateCrc64_ToLower(name.GetText(), length, kKvCrc64Initial)));
}

CKvFileHandle* CKvBigFile::FileOpenByIndex(int index)
{
    return m_fat != nullptr ? OpenEntry(m_fat->GetEntry(index)) : nullptr;
}

CKvFileHandle* CKvBigFile::OpenEntry(CKvBigFileEntry* entry)
{
    return entry != nullptr ? new CKvFileHandleBigFile(*this, *entry) : nullptr;
}

bool CKvBigFile::FileClose(CKvFileHandle*& handle)
{
    if (handle == nullptr || handle->GetType() != CKvFileHandle::EType::Archive)
        return false;
    const CKvBigFile* owner = static_cast<CKvFileHandleBigFile*>(handle)->GetOwner();
    if (owner != this && owner != nullptr)
        return false;
    delete handle;
    handle = nullptr;
    return true;
}

int CKvBigFile::FileRead(CKvFileHandle* handle, void* buffer, int size)
{
    bool complete = false;
    return ReadMember(handle, buffer, size, complete);
}

EError CKvBigFile::AsyncRead(CKvFileHandle* handle, void* buffer, int size)
{
    bool complete = false;
    static_cast<void>(ReadMember(handle, buffer, size, complete));
    return complete ? EError::Success : EError::ReadFailed;
}

int CKvBigFile::GetNumFiles() const
{
    return m_fat != nullptr ? m_fat->GetEntryCount() : 0;
}

std::uint64_t CKvBigFile::GetFileNameCrcByIndex(int index) const
{
    const CKvBigFileEntry* entry = m_fat != nullptr ? m_fat->GetEntry(index) : nullptr;
    return entry != nullptr ? entry->GetCRC64() : 0;
}

TKvString<char> CKvBigFile::GetFileNameByIndex(int index) const
{
    const CKvBigFileEntry* entry = m_fat != nullptr ? m_fat->GetEntry(index) : nullptr;
    return entry != nullptr ? entry->GetFileName() : TKvString<char>();
}

bool CKvBigFile::ReadFAT()
{
    auto fat = std::make_unique<CKvBigFileFAT>();
    if (!fat->SerialFrom(m_file))
        return false;
    DetachHandles();
    m_fat = std::move(fat);
    return true;
}

CKvFileHandleBigFile* CKvBigFile::AsOwnHandle(CKvFileHandle* handle) const
{
    if (handle == nullptr || handle->GetType() != CKvFileHandle::EType::Archive)
        return nullptr;
    auto* member = static_cast<CKvFileHandleBigFile*>(handle);
    return member->GetOwner() == this ? member : nullptr;
}

int CKvBigFile::ReadMember(CKvFileHandle* handle, void* buffer, int size, bool& complete)
{
    complete = false;
    const CKvFileHandleBigFile* member = AsOwnHandle(handle);
    if (member == nullptr)
        return 0;
    const std::int64_t position = member->GetPos();
    const std::int64_t start = member->m_entry->GetAbsolutePos();
    const std::int64_t left = member->m_entry->GetSize() - position;
    if (start < 0 || position < 0 || left < 0)
        return 0;
    const auto count = static_cast<int>(std::min<std::int64_t>(size, left));
    if (count < 1) {
        complete = true;
        return 0;
    }
    if (start + position >= m_archiveSize)
        return 0;
    const int read = m_readAhead.Read(m_file.GetHandle(), start + position, buffer, count);
    complete = read == count;
    std::memset(static_cast<char*>(buffer) + read, 0, static_cast<std::size_t>(count - read));
    return count;
}

void CKvBigFile::DetachHandles()
{
    while (m_firstHandle != nullptr)
        m_firstHandle->Detach();
}
