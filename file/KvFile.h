// The file object that callers hold: one handle with typed reads and writes, strings and whole-file
// reading. Values are stored in the host's byte order; nothing is converted.

#pragma once

#include <cstdint>

#include "file/KvFileHandle.h"

/// A handle, shared with the copies of the object: they move the same position and must not be used
/// once the handle is closed.
///
/// Ownership: the object that opened the handle closes it when destroyed; copies never do.
class CKvFile
{
public:
    /// A closed file, which closes what it opens.
    CKvFile() = default;

    /// A file over somebody else's handle, which the destructor leaves open.
    explicit CKvFile(CKvFileHandle* handle) : m_handle(handle), m_ownsHandle(false) {}

    /// Copies share the handle and never close it when destroyed.
    CKvFile(const CKvFile& other) : m_handle(other.m_handle), m_ownsHandle(false) {}
    CKvFile& operator=(const CKvFile& other);

    virtual ~CKvFile();

    /// Opens a file, as CKvFileSystemUnCached::Open() does.
    ///
    /// Errors: AlreadyOpen when a handle is held, which stays; else those of the file system.
    [[nodiscard]] EKvFileSystemError Open(const TKvString<char>& path, EKvFileSystemOpenMode mode,
                                          bool useBigFiles);

    /// Closes the handle, also one that was handed in.
    ///
    /// Errors: CloseFailed when no handle is held, or when closing or any write before it failed.
    EKvFileSystemError Close();

    bool IsOpened() const { return m_handle != nullptr; }

    /// The handle that is held, or null. Ownership: unchanged.
    CKvFileHandle* GetHandle() const { return m_handle; }

    /// None without handle.
    EKvFileSystemOpenMode GetOpenMode() const;

    /// Bytes from the start; -1 without handle or when the stream has no such position.
    int GetPos() const;

    /// Move the position by \a offset bytes from the start, the current position or the end; beyond
    /// the end is allowed. From the end of an archive member offsets count backwards: 10 is ten
    /// bytes before its end, on a disk file ten beyond. A seek that a disk file's stream refuses
    /// leaves the position where it was; a member takes any, and reads outside it give 0.
    ///
    /// Errors: false only without a handle that can have a position; GetPos() tells the rest.
    bool SeekFromStart(int offset);
    bool SeekFromCurrent(int offset);
    bool SeekFromEnd(int offset);

    /// Bytes in the file; 0 without handle, for a stream without size and for 2 GiB or more.
    int GetSize() const;

    /// Gives the bytes read, as CKvFileSystemUnCached::Read() does; 0 for a size below 1.
    [[nodiscard]] int Read(void* buffer, int size);

    /// Gives \a size, or 0 when the write failed.
    int Write(const void* data, int size);

    /// Read and write before they return.
    ///
    /// Errors: ReadFailed or WriteFailed without handle or when not all bytes went; Busy while the
    ///         handle's status is not idle.
    EKvFileSystemError AsyncRead(void* buffer, int size);
    EKvFileSystemError AsyncWrite(const void* data, int size);

    /// Nothing is ever pending.
    EKvFileSystemError AsyncWait() { return EKvFileSystemError::Success; }

    /// Typed reads. Errors: ReadFailed when fewer bytes came; the rest of the value is then zero.
    [[nodiscard]] EKvFileSystemError ReadS8(signed char& value);
    [[nodiscard]] EKvFileSystemError ReadU8(unsigned char& value);
    [[nodiscard]] EKvFileSystemError ReadS16(short& value);
    [[nodiscard]] EKvFileSystemError ReadU16(unsigned short& value);
    [[nodiscard]] EKvFileSystemError ReadS32(int& value);
    [[nodiscard]] EKvFileSystemError ReadU32(unsigned int& value);
    [[nodiscard]] EKvFileSystemError ReadF32(float& value);
    [[nodiscard]] EKvFileSystemError ReadS64(std::int64_t& value);
    [[nodiscard]] EKvFileSystemError ReadU64(std::uint64_t& value);

    /// Typed writes; the 8- and 16-bit ones store the low bytes. Errors: WriteFailed.
    EKvFileSystemError WriteS8(int value);
    EKvFileSystemError WriteU8(int value);
    EKvFileSystemError WriteS16(int value);
    EKvFileSystemError WriteU16(int value);
    EKvFileSystemError WriteS32(int value);
    EKvFileSystemError WriteU32(unsigned int value);
    EKvFileSystemError WriteF32(float value);
    EKvFileSystemError WriteS64(std::int64_t value);
    EKvFileSystemError WriteU64(std::uint64_t value);

    /// The longest string that a file holds, in bytes without terminator.
    static constexpr int kLongestString = 4095;

    /// Reads up to and with a zero byte; the string becomes the bytes before it.
    ///
    /// Errors: ReadFailed at the end of the file, with the bytes that came, and for a string above
    ///         kLongestString, which becomes empty.
    [[nodiscard]] EKvFileSystemError ReadString(TKvString<char>& text);

    /// Writes the characters and one zero byte. Always Success: a failure shows in Close().
    EKvFileSystemError WriteString(const TKvString<char>& text);

    /// Reads the whole file from its start, decompressed when it is a compressed file.
    ///
    /// Ownership: the result is an unsigned char array from array new, the caller's to delete.
    /// Errors:    null and size 0 when not every byte that CKvCompressedFileReader announces comes,
    ///            or memory is short. A compressed file carries no checksum: damage that gives as
    ///            many bytes, but others, passes.
    [[nodiscard]] void* ReadEntireFile(int& size);

private:
    CKvFileHandle* m_handle = nullptr;
    bool m_ownsHandle = true;
};
