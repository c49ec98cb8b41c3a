// A file that is read at several places in turn: eight windows of 8,192 bytes over one disk file or
// archive member, so that going back to a place does not read it again. Compressed files give their
// uncompressed bytes. It opens and closes what it reads; CKvFile and CKvFileSystemUnCached have no
// use for a handle of this kind: there its position and size are 0, nothing is read, and closing it
// gives CloseFailed and leaves it as it is.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

#include "file/KvCompressedFile.h"
#include "file/KvFileHandle.h"
#include "file/KvMemoryDecompressor.h"

/// Lengths and positions are bytes of the file, uncompressed ones where it is compressed, and those
/// of the time when it was opened. Fields stand in the documented order.
class CKvFileHandleCached : public CKvFileHandle
{
public:
    /// The result of a Read() whose window could not be filled.
    static constexpr int kReadFailed = -5;

    /// Notes what is to be opened; Open() may say otherwise. The last argument has no meaning.
    CKvFileHandleCached(const TKvString<char>& path, EKvFileSystemOpenMode mode, int = 0);

    /// Closes what is open.
    ~CKvFileHandleCached() override;

    EType GetType() const override { return EType::Cached; }
    const TKvString<char>& GetName() const override { return m_name; }
    EKvFileSystemOpenMode GetOpenMode() const override { return m_openMode; }

    /// Opens a file at position 0, as CKvFileSystemUnCached::Open() does. With one of the modes for
    /// writing nothing can be read.
    ///
    /// Errors: AlreadyOpen when a file is open, which stays; ReadFailed when its size cannot be
    ///         told or is beyond its archive, when its beginning cannot be read, when the header of
    ///         a compressed file promises more than its block can hold, or when memory is short;
    ///         else those of the file system.
    [[nodiscard]] EKvFileSystemError Open(const TKvString<char>& path, EKvFileSystemOpenMode mode,
                                          bool useBigFiles);

    /// Gives the bytes read, fewer than \a size at the end; 0 when closed.
    ///
    /// Errors: kReadFailed, the position unchanged and \a buffer undefined, when a window of the
    ///         cache cannot be filled: the file has shrunk or is damaged, the disk failed or memory
    ///         is short. A part that goes straight to \a buffer, because it would fill a window or
    ///         more, gives a short count instead: without all of that part, or as far as a
    ///         compressed file can be expanded.
    /// Cost:   a compressed file is expanded again from its start for each window that lies before
    ///         the last one.
    [[nodiscard]] int Read(void* buffer, int size);

    /// Hands the bytes to the file itself; length and position of this handle stay as they are.
    ///
    /// Errors: as CKvFileSystemUnCached::Write().
    int Write(const void* data, int size);

    /// Move the position by \a bytes from the start or the current position; it stops at both ends
    /// of the file. Seeking touches no disk: the next read does. The last argument has no meaning.
    ///
    /// SeekStart() takes up the window that holds the position, if one does, else the one that was
    /// read least recently; SeekCurrent() keeps to the window in use.
    /// Errors: false when closed.
    bool SeekStart(int bytes, int = 0);
    bool SeekCurrent(int bytes, int = 0);

    /// Not supported: always false, and the position stays.
    bool SeekEnd(int, int = 0) { return false; }

    int FilePos() const { return m_caches[m_current].position; }

    /// The bytes behind the next one: 0 at the last byte, -1 at the end.
    int EndOfFile() const { return m_size - FilePos() - 1; }

    /// 0 when closed.
    int GetFileLength() const { return m_size; }

    /// Errors: CloseFailed when nothing is open, or when closing or any write before it failed.
    EKvFileSystemError Close();

protected:
    static constexpr int kCacheCount = 8;
    static constexpr int kDefaultCapacity = 8192;

    /// Sets how many bytes a window is filled with: \a sizeBytes between 1 and 8,191, any other
    /// number for 8,192. What the window holds stays. No effect for an index outside 0 to 7.
    void SetCacheSize(int sizeBytes, int cacheIndex);

private:
    struct CFreeDeleter
    {
        void operator()(void* memory) const { std::free(memory); }
    };

    /// One read position and the window around it: the buffer holds the bytes of the file from
    /// position - offset to position + unread.
    struct SCache
    {
        int position = 0;
        std::unique_ptr<void, CFreeDeleter> raw;
        char* aligned = nullptr;
        int offset = 0;
        int capacity = kDefaultCapacity;
        int unread = 0;
        /// 0 for a cache that was never read through.
        std::uint64_t lastUse = 0;

        int WindowEnd() const { return position + unread; }
        bool Holds(int filePosition) const;

        /// Moves inside the window, or empties it and moves out.
        void MoveTo(int filePosition);

        /// Copies up to \a size unread bytes and moves behind them.
        int Take(char* out, int size);

        bool Allocate();
    };

    bool PrepareReading();
    bool PrepareDecompression();
    std::size_t ChooseCache(int filePosition) const;
    bool Fill(SCache& cache);
    int ReadAt(int filePosition, char* out, int size);
    bool MoveSourceTo(int filePosition);
    int ReadSource(char* out, int size);

    CKvFileHandle* m_file = nullptr;
    int m_size = 0;
    std::size_t m_current = 0;
    std::uint64_t m_useCounter = 0;
    std::array<SCache, kCacheCount> m_caches;
    TKvString<char> m_name;
    EKvFileSystemOpenMode m_openMode;
    std::array<char, kKvCompressedHeaderSize> m_header = {};
    int m_compressedSize = 0;
    /// The compressed block; null when the file is not compressed.
    std::unique_ptr<char[]> m_compressed;
    CKvMemoryDecompressor m_decompressor;

    /// Where the next byte of the source, file or decompressor, comes from; -1 when unknown.
    int m_sourcePosition = -1;
};
