// Reads a file once from front to back, decompressed when it starts with the header of a compressed
// file and as it is otherwise. Never holds more than two pieces of 16 KiB of the file.

#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <span>

#include "file/KvCompressedFile.h"
#include "file/KvLzma.h"

class CKvFile;

/// A file is compressed when it has at least the header and the properties behind it, and the
/// header's magic; anything else is delivered as it stands. Fields stand in the documented order.
class CKvCompressedFileReader
{
public:
    /// Rewinds the file and gives the number of bytes that Read() will deliver in all.
    ///
    /// Ownership: the file stays the caller's, must outlive the reader and is moved by it alone.
    /// Errors:    IsRefused(), and \a size is 0.
    CKvCompressedFileReader(CKvFile* file, int& size);
    CKvCompressedFileReader(const CKvCompressedFileReader&) = delete;
    CKvCompressedFileReader& operator=(const CKvCompressedFileReader&) = delete;

    /// Waits for a read in flight.
    ~CKvCompressedFileReader();

    /// True when nothing will be delivered though the file is no empty one: it is not open, its
    /// size cannot be told, is 2 GiB or more or beyond its archive, its beginning cannot be read,
    /// its header promises 2 GiB or more or more than its stream can give, its properties are none,
    /// or memory is short.
    bool IsRefused() const { return m_isRefused; }

    /// Delivers the next bytes, \a count or all that are left.
    ///
    /// Errors: the total stays below the announced size when the file is damaged, cut or cannot be
    ///         read on; 0 for a count below 1.
    [[nodiscard]] int Read(void* out, int count);

    /// Moves forward to an output position by reading up to it; one behind is ignored.
    void SeekFromStart(int pos);

private:
    static constexpr int kBufferSize = 16384;

    struct CBuffer
    {
        std::array<unsigned char, kBufferSize> data;
        std::size_t consumed;
        std::size_t valid;

        std::span<const unsigned char> Unconsumed() const
        {
            return {data.data() + consumed, valid - consumed};
        }
    };

    /// Looks at the file's beginning. False when the file is refused.
    bool Begin();
    bool BeginCompressed(const unsigned char* properties);

    /// Reads the next piece of the file into a free buffer, if there is any of either.
    void StartRead();

    /// Makes the buffer in flight the ready one.
    void FinishRead();

    /// One step of delivering.
    CKvLzmaProgress Serve(std::span<unsigned char> out);

    CKvFile* m_file;
    std::array<unsigned char, kKvCompressedHeaderSize> m_header = {};
    bool m_isCompressed = false;
    CKvLzmaDecoder m_decoder;
    std::unique_ptr<CBuffer[]> m_buffers;
    CBuffer* m_ready = nullptr;
    CBuffer* m_inFlight = nullptr;
    std::array<CBuffer*, 2> m_free = {};
    int m_fileLeft = 0;
    int m_outputLeft = 0;
    int m_outputSize = 0;
    bool m_isRefused = false;
};
