#include "file/KvFileSystemUnCached.h"

#include <array>
#include <climits>
#include <cstring>
#include <memory>
#include <new>

#include "core/KvByteOrder.h"
#include "file/KvFileHandleStd.h"
#include "platform/KvPlatform.h"

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

int ToIntOr(int otherwise, std::int64_t value)
{
    return value >= 0 && value <= INT_MAX ? static_cast<int>(value) : otherwise;
}

bool Seek(CKvFileHandle* handle, int offset, EKvSeekOrigin origin)
{
    const CKvFileHandleStdPC* file = AsDiskFile(handle);
    if (file == nullptr)
        return false;
    KvPlatformDisk().seekStream(file->GetDescriptor(), offset, origin);
    return true;
}

/// Writes a copy of the data that is reversed word by word.
std::size_t WriteSwapped(std::FILE* stream, const void* data, std::size_t sizeBytes)
{
    const std::unique_ptr<unsigned int[]> copy(new (std::nothrow) unsigned int[sizeBytes / 4 + 1]);
    if (copy == nullptr)
        return 0;
    std::memcpy(copy.get(), data, sizeBytes);
    KvSwapEndian(copy.get(), static_cast<unsigned int>(sizeBytes));
    return KvPlatformDisk().writeStream(stream, copy.get(), sizeBytes);
}

}  // namespace

EError CKvFileSystemUnCached::Open(CKvFileHandle*& handle, const TKvString<char>& path, EMode mode,
                                   bool /*useBigFiles: no archive can be registered yet*/)
{
    handle = nullptr;
    if (!IsKnownMode(mode))
        return EError::ModeNotAllowed;
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
    CKvFileHandleStdPC* file = AsDiskFile(handle);
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
    const CKvFileHandleStdPC* file = AsDiskFile(handle);
    if (file == nullptr || size < 1)
        return 0;
    const EMode mode = file->GetOpenMode();
    if (mode != EMode::ReadBinary && mode != EMode::ReadText)
        return 0;  // the attempt would mark the stream as failed, though all writes went well
    return static_cast<int>(
        KvPlatformDisk().readStream(file->GetDescriptor(), buffer, static_cast<std::size_t>(size)));
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
    const CKvFileHandleStdPC* file = AsDiskFile(handle);
    return file != nullptr ? ToIntOr(-1, KvPlatformDisk().tellStream(file->GetDescriptor())) : 0;
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
    const int read = Read(handle, buffer, size);
    handle->SetStatus(CKvFileHandle::EStatus::Idle);
    return read == size ? EError::Success : EError::ReadFailed;
}

EError CKvFileSystemUnCached::AsyncWrite(CKvFileHandle* handle, const void* data, int size)
{
    if (handle == nullptr)
        return EError::NoHandle;
    if (handle->GetStatus() != CKvFileHandle::EStatus::Idle)
        return EError::Busy;
    handle->SetStatus(CKvFileHandle::EStatus::Writing);
    const int written = Write(handle, data, size);
    handle->SetStatus(CKvFileHandle::EStatus::Idle);
    return written == size ? EError::Success : EError::WriteFailed;
}
