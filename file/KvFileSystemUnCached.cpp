#include "file/KvFileSystemUnCached.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "core/KvByteOrder.h"
#include "file/KvBigFile.h"
#include "file/KvFileHandleBigFile.h"
#include "file/KvFileHandleStd.h"
#include "platform/KvPlatform.h"

CKvArray<CKvBigFile*>* CKvFileSystemUnCached::m_aBigFile = nullptr;
bool CKvFileSystemUnCached::m_bSwapDWORDOnWrite = false;

namespace {

using EMode = EKvFileSystemOpenMode;
using EError = EKvFileSystemError;

/// The stream mode of each open mode; mode 0 has none.
constexpr std::array<const char*, 7> kStreamModes = {nullptr, "rb", "wb", "ab", "rt", "wt", "at"};

bool IsKnownMode(EMode mode)
{
    const int number = static_cast<int>(mode);
    return number > 0 && number < static_cast<int>(kStreamModes.size());
}

/// The handle as a disk file, or null when it is none.
CKvFileHandleStdPC* AsDiskFile(CKvFileHandle* handle)
{
    if (handle == nullptr || handle->GetType() != CKvFileHandle::EType::Disk)
        return nullptr;
    return static_cast<CKvFileHandleStdPC*>(handle);
}

/// The handle as a member of an archive, or null when it is none.
CKvFileHandleBigFile* AsMember(CKvFileHandle* handle)
{
    if (handle == nullptr || handle->GetType() != CKvFileHandle::EType::Archive)
        return nullptr;
    return static_cast<CKvFileHandleBigFile*>(handle);
}

bool IsReadMode(EMode mode)
{
    return mode == EMode::ReadBinary || mode == EMode::ReadText;
}

int ToIntOr(int otherwise, std::int64_t value)
{
    return value >= 0 && value <= INT_MAX ? static_cast<int>(value) : otherwise;
}

struct CFreeMemory
{
    void operator()(void* block) const { std::free(block); }
};

/// Writes a copy of the data that is reversed word by word.
std::size_t WriteSwapped(std::FILE* stream, const void* data, std::size_t sizeBytes)
{
    // An array of words throws where their number times their size exceeds a system of 32 bits.
    const std::unique_ptr<unsigned int, CFreeMemory> copy(
        static_cast<unsigned int*>(std::malloc(sizeBytes)));
    if (copy == nullptr)
        return 0;
    std::memcpy(copy.get(), data, sizeBytes);
    KvSwapEndian(copy.get(), static_cast<unsigned int>(sizeBytes));
    return KvPlatformDisk().writeStream(stream, copy.get(), sizeBytes);
}

}  // namespace

EError CKvFileSystemUnCached::Open(CKvFileHandle*& handle, const TKvString<char>& path, EMode mode,
                                   bool useBigFiles)
{
    handle = nullptr;
    if (!IsKnownMode(mode))
        return EError::ModeNotAllowed;
    if (useBigFiles && IsReadMode(mode) && m_aBigFile != nullptr) {
        for (CKvBigFile* archive : *m_aBigFile) {
            handle = archive->FileOpen(path);
            if (handle != nullptr)
                return EError::Success;
        }
    }
    std::unique_ptr<CKvFileHandleStdPC> file(new CKvFileHandleStdPC(path, mode));
    file->m_stream =
        KvPlatformDisk().openStream(path.GetText(), kStreamModes[static_cast<std::size_t>(mode)]);
    if (file->m_stream == nullptr)
        return EError::NotOpened;
    handle = file.release();
    return EError::Success;
}

EError CKvFileSystemUnCached::Close(CKvFileHandle*& handle)
{
    if (handle == nullptr)
        return EError::NoHandle;
    if (AsMember(handle) != nullptr) {
        delete handle;  // it leaves its archive, if that is still open
        handle = nullptr;
        return EError::Success;
    }
    const CKvFileHandleStdPC* file = AsDiskFile(handle);
    if (file == nullptr)
        return EError::CloseFailed;
    const bool closed = KvPlatformDisk().closeStream(file->GetDescriptor());
    const bool complete = closed && !file->m_writeFailed;
    delete handle;
    handle = nullptr;
    return complete ? EError::Success : EError::CloseFailed;
}

int CKvFileSystemUnCached::Read(CKvFileHandle* handle, void* buffer, int size)
{
    bool complete = false;
    if (AsMember(handle) != nullptr)
        return ReadMember(handle, buffer, size, complete);
    const CKvFileHandleStdPC* file = AsDiskFile(handle);
    if (file == nullptr || size < 1)
        return 0;
    if (!IsReadMode(file->GetOpenMode()))
        return 0;  // the attempt would mark the stream as failed, though all writes went well
    return static_cast<int>(
        KvPlatformDisk().readStream(file->GetDescriptor(), buffer, static_cast<std::size_t>(size)));
}

int CKvFileSystemUnCached::ReadMember(CKvFileHandle* handle, void* buffer, int size, bool& complete)
{
    CKvFileHandleBigFile* member = AsMember(handle);
    complete = false;
    if (member->GetOwner() == nullptr)
        return 0;
    const int count = member->GetOwner()->ReadMember(handle, buffer, size, complete);
    member->SetPos(std::int64_t{member->GetPos()} + count);
    return count;
}

int CKvFileSystemUnCached::ReadAt(CKvFileHandle* handle, std::int64_t offset, void* buffer,
                                  int size)
{
    const CKvFileHandleStdPC* file = AsDiskFile(handle);
    if (file == nullptr || size < 1 || !IsReadMode(file->GetOpenMode()))
        return 0;
    return static_cast<int>(KvPlatformDisk().readStreamAt(file->GetDescriptor(), offset, buffer,
                                                          static_cast<std::size_t>(size)));
}

int CKvFileSystemUnCached::Write(CKvFileHandle* handle, const void* data, int size)
{
    CKvFileHandleStdPC* file = AsDiskFile(handle);
    if (file == nullptr || size < 1)
        return 0;
    const auto sizeBytes = static_cast<std::size_t>(size);
    const std::size_t written =
        m_bSwapDWORDOnWrite ? WriteSwapped(file->GetDescriptor(), data, sizeBytes)
                            : KvPlatformDisk().writeStream(file->GetDescriptor(), data, sizeBytes);
    if (written == sizeBytes)
        return size;
    file->m_writeFailed = true;
    return 0;
}

int CKvFileSystemUnCached::GetPos(CKvFileHandle* handle)
{
    if (handle == nullptr)
        return -1;
    if (const CKvFileHandleBigFile* member = AsMember(handle))
        return member->GetPos();
    const CKvFileHandleStdPC* file = AsDiskFile(handle);
    return file != nullptr ? ToIntOr(-1, KvPlatformDisk().tellStream(file->GetDescriptor())) : 0;
}

bool CKvFileSystemUnCached::Seek(CKvFileHandle* handle, int offset, EKvSeekOrigin origin)
{
    if (CKvFileHandleBigFile* member = AsMember(handle)) {
        std::int64_t position = offset;
        if (origin == EKvSeekOrigin::Current)
            position = std::int64_t{member->GetPos()} + offset;
        else if (origin == EKvSeekOrigin::End)
            position = std::int64_t{member->GetSize()} - offset;
        member->SetPos(position);
        return true;
    }
    const CKvFileHandleStdPC* file = AsDiskFile(handle);
    if (file == nullptr)
        return false;
    KvPlatformDisk().seekStream(file->GetDescriptor(), offset, origin);
    return true;
}

bool CKvFileSystemUnCached::SeekFromStart(CKvFileHandle* handle, int offset)
{
    return Seek(handle, offset, EKvSeekOrigin::Start);
}

bool CKvFileSystemUnCached::SeekFromCurrent(CKvFileHandle* handle, int offset)
{
    return Seek(handle, offset, EKvSeekOrigin::Current);
}

bool CKvFileSystemUnCached::SeekFromEnd(CKvFileHandle* handle, int offset)
{
    return Seek(handle, offset, EKvSeekOrigin::End);
}

int CKvFileSystemUnCached::GetSize(CKvFileHandle* handle)
{
    if (const CKvFileHandleBigFile* member = AsMember(handle))
        return member->GetSize();
    const CKvFileHandleStdPC* file = AsDiskFile(handle);
    if (file == nullptr)
        return 0;
    const CKvDiskOperations& disk = KvPlatformDisk();
    std::FILE* stream = file->GetDescriptor();
    const std::int64_t position = disk.tellStream(stream);
    if (position < 0 || !disk.seekStream(stream, 0, EKvSeekOrigin::End))
        return 0;
    const std::int64_t size = disk.tellStream(stream);
    return disk.seekStream(stream, position, EKvSeekOrigin::Start) ? ToIntOr(0, size) : 0;
}

bool CKvFileSystemUnCached::MeasureWhole(CKvFileHandle* handle, int& size)
{
    size = 0;
    const int stated = GetSize(handle);
    if (!SeekFromStart(handle, 0) || GetPos(handle) != 0)
        return false;
    char byte = 0;
    const CKvFileHandleBigFile* member = AsMember(handle);
    const bool isKnown =
        member != nullptr ? member->IsInArchive() : stated > 0 || Read(handle, &byte, 1) == 0;
    if (isKnown)
        size = stated;
    return isKnown;
}

bool CKvFileSystemUnCached::Exists(const TKvString<char>& path)
{
    return KvPlatformFileExists(path.GetText());
}

EError CKvFileSystemUnCached::AsyncRead(CKvFileHandle* handle, void* buffer, int size)
{
    if (handle == nullptr)
        return EError::NoHandle;
    if (handle->GetStatus() != CKvFileHandle::EStatus::Idle)
        return EError::Busy;
    handle->SetStatus(CKvFileHandle::EStatus::Reading);
    bool complete = true;
    const int read = AsMember(handle) != nullptr ? ReadMember(handle, buffer, size, complete)
                                                 : Read(handle, buffer, size);
    handle->SetStatus(CKvFileHandle::EStatus::Idle);
    return complete && read == size ? EError::Success : EError::ReadFailed;
}

EError CKvFileSystemUnCached::AsyncWrite(CKvFileHandle* handle, const void* data, int size)
{
    if (handle == nullptr)
        return EError::NoHandle;
    if (handle->GetStatus() != CKvFileHandle::EStatus::Idle)
        return EError::Busy;
    if (AsMember(handle) != nullptr)
        return EError::Success;
    handle->SetStatus(CKvFileHandle::EStatus::Writing);
    const int written = Write(handle, data, size);
    handle->SetStatus(CKvFileHandle::EStatus::Idle);
    return written == size ? EError::Success : EError::WriteFailed;
}

bool CKvFileSystemUnCached::AddBigFile(const TKvString<char>& path)
{
    if (m_aBigFile == nullptr)
        m_aBigFile = new CKvArray<CKvBigFile*>;
    for (const CKvBigFile* registered : *m_aBigFile) {
        if (registered->GetName() == path)
            return false;
    }
    auto archive = std::make_unique<CKvBigFile>();
    if (archive->Open(path, EMode::ReadBinary) != EError::Success)
        return false;
    m_aBigFile->Add(archive.get());
    static_cast<void>(archive.release());
    return true;
}
