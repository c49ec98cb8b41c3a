// Turns a memory block into a compressed block: LZMA properties and a raw LZMA stream, readable by
// CKvMemoryDecompressor and, behind the header of KvCompressedFile.h, as a file.

#pragma once

class CKvMemoryCompressor
{
public:
    CKvMemoryCompressor() = default;
    CKvMemoryCompressor(const CKvMemoryCompressor&) = default;
    CKvMemoryCompressor& operator=(const CKvMemoryCompressor&) = default;
    virtual ~CKvMemoryCompressor();

    /// The capacity that Compress() asks for, enough for any input of \a size bytes.
    ///
    /// Errors: 0 for a negative size and where the capacity does not fit an int.
    static int ComputeCompressionBufferSize(const char* source, int size);

    /// Writes the compressed block to \a dest and gives its size.
    ///
    /// Errors: 0 when \a capacity is below ComputeCompressionBufferSize(), which leaves \a dest as
    ///         it was, and when memory is short.
    /// Cost:   11 MB for the time of the call, whatever the size.
    [[nodiscard]] static int Compress(const char* source, int size, char* dest, int capacity);
};
