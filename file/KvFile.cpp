#include "file/KvFile.h"

#include <array>
#include <cstring>
#include <memory>
#include <new>

#include "file/KvCompressedFileReader.h"
#include "file/KvFileSystemUnCached.h"

using FileSystem = CKvFileSystemUnCached;
using EError = EKvFileSystemError;

namespace {

/// Tells whether all bytes came. Read() does not, where an archive has lost some of a member's.
bool ReadAll(CKvFile& file, void* buffer, int size)
{
    return file.AsyncRead(buffer, size) == EError::Success;
}

template <class T>
EError ReadValue(CKvFile& file, T& value)
{
    std::array<unsigned char, sizeof(T)> bytes = {};
    const bool isRead = ReadAll(file, bytes.data(), static_cast<int>(bytes.size()));
    std::memcpy(&value, bytes.data(), bytes.size());
    return isRead ? EError::Success : EError::ReadFailed;
}

template <class T>
EError WriteValue(CKvFile& file, T value)
{
    constexpr int kSize = sizeof(T);
    return file.Write(&value, kSize) == kSize ? EError::Success : EError::WriteFailed;
}

}  // namespace

CKvFile& CKvFile::operator=(const CKvFile& other)
{
    if (this == &other || m_handle == other.m_handle)
        return *this;  // a copy that comes back must not close what it shares
    if (m_ownsHandle && m_handle != nullptr)
        FileSystem::Close(m_handle);
    m_handle = other.m_handle;
    m_ownsHandle = false;
    return *this;
}

CKvFile::~CKvFile()
{
    if (m_ownsHandle && m_handle != nullptr)
        FileSystem::Close(m_handle);
}

EError CKvFile::Open(const TKvString<char>& path, EKvFileSystemOpenMode mode, bool useBigFiles)
{
    if (m_handle != nullptr)
        return EError::AlreadyOpen;
    m_ownsHandle = true;
    return FileSystem::Open(m_handle, path, mode, useBigFiles);
}

EError CKvFile::Close()
{
    return m_handle != nullptr ? FileSystem::Close(m_handle) : EError::CloseFailed;
}

EKvFileSystemOpenMode CKvFile::GetOpenMode() const
{
    return m_handle != nullptr ? m_handle->GetOpenMode() : EKvFileSystemOpenMode::None;
}

int CKvFile::GetPos() const
{
    return FileSystem::GetPos(m_handle);
}

bool CKvFile::SeekFromStart(int offset)
{
    return FileSystem::SeekFromStart(m_handle, offset);
}

bool CKvFile::SeekFromCurrent(int offset)
{
    return FileSystem::SeekFromCurrent(m_handle, offset);
}

bool CKvFile::SeekFromEnd(int offset)
{
    return FileSystem::SeekFromEnd(m_handle, offset);
}

int CKvFile::GetSize() const
{
    return FileSystem::GetSize(m_handle);
}

int CKvFile::Read(void* buffer, int size)
{
    return size < 1 ? 0 : FileSystem::Read(m_handle, buffer, size);
}

int CKvFile::Write(const void* data, int size)
{
    return FileSystem::Write(m_handle, data, size);
}

EError CKvFile::AsyncRead(void* buffer, int size)
{
    return m_handle != nullptr ? FileSystem::AsyncRead(m_handle, buffer, size) : EError::ReadFailed;
}

EError CKvFile::AsyncWrite(const void* data, int size)
{
    return m_handle != nullptr ? FileSystem::AsyncWrite(m_handle, data, size) : EError::WriteFailed;
}

EError CKvFile::ReadS8(signed char& value)
{
    return ReadValue(*this, value);
}

EError CKvFile::ReadU8(unsigned char& value)
{
    return ReadValue(*this, value);
}

EError CKvFile::ReadS16(short& value)
{
    return ReadValue(*this, value);
}

EError CKvFile::ReadU16(unsigned short& value)
{
    return ReadValue(*this, value);
}

EError CKvFile::ReadS32(int& value)
{
    return ReadValue(*this, value);
}

EError CKvFile::ReadU32(unsigned int& value)
{
    return ReadValue(*this, value);
}

EError CKvFile::ReadF32(float& value)
{
    return ReadValue(*this, value);
}

EError CKvFile::ReadS64(std::int64_t& value)
{
    return ReadValue(*this, value);
}

EError CKvFile::ReadU64(std::uint64_t& value)
{
    return ReadValue(*this, value);
}

EError CKvFile::WriteS8(int value)
{
    return WriteValue(*this, static_cast<signed char>(value));
}

EError CKvFile::WriteU8(int value)
{
    return WriteValue(*this, static_cast<unsigned char>(value));
}

EError CKvFile::WriteS16(int value)
{
    return WriteValue(*this, static_cast<short>(value));
}

EError CKvFile::WriteU16(int value)
{
    return WriteValue(*this, static_cast<unsigned short>(value));
}

EError CKvFile::WriteS32(int value)
{
    return WriteValue(*this, value);
}

EError CKvFile::WriteU32(unsigned int value)
{
    return WriteValue(*this, value);
}

EError CKvFile::WriteF32(float value)
{
    return WriteValue(*this, value);
}

EError CKvFile::WriteS64(std::int64_t value)
{
    return WriteValue(*this, value);
}

EError CKvFile::WriteU64(std::uint64_t value)
{
    return WriteValue(*this, value);
}

EError CKvFile::ReadString(TKvString<char>& text)
{
    std::array<char, kLongestString + 1> bytes = {};
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        const bool ended = !ReadAll(*this, &bytes[length], 1);
        if (ended || bytes[length] == '\0') {
            bytes[length] = '\0';
            text = bytes.data();
            return ended ? EError::ReadFailed : EError::Success;
        }
    }
    text = "";
    return EError::ReadFailed;
}

EError CKvFile::WriteString(const TKvString<char>& text)
{
    Write(text.GetText(), text.GetLength());
    Write("", 1);
    return EError::Success;
}

void* CKvFile::ReadEntireFile(int& size)
{
    size = 0;
    int announced = 0;
    CKvCompressedFileReader reader(this, announced);
    if (reader.IsRefused())
        return nullptr;
    std::unique_ptr<unsigned char[]> bytes(
        new (std::nothrow) unsigned char[static_cast<std::size_t>(announced)]);
    if (bytes == nullptr || reader.Read(bytes.get(), announced) != announced)
        return nullptr;
    size = announced;
    return bytes.release();
}
