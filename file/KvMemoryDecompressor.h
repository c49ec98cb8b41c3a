// Expands a compressed block piece by piece, straight into the caller's memory.

#pragma once

#include <span>

#include "file/KvLzma.h"

/// Empty until Initialize(). A block may be damaged or hostile: counts then stay short. Nothing in
/// a block tells its uncompressed size or vouches for its bytes; the caller knows the one and must
/// bear with the other. Fields stand in the documented order.
class CKvMemoryDecompressor
{
public:
    CKvMemoryDecompressor() = default;
    CKvMemoryDecompressor(const CKvMemoryDecompressor&) = delete;
    CKvMemoryDecompressor& operator=(const CKvMemoryDecompressor&) = delete;
    virtual ~CKvMemoryDecompressor();

    static constexpr int kUnknownSize = -1;

    /// Starts on a block, from its beginning, and lets go of the one before. Who knows how many
    /// bytes will be asked for at most says so: a block of any size may ask for a dictionary of
    /// 4 GiB, and gets none that is larger than its output.
    ///
    /// Ownership: the block stays the caller's and must live until Release() or the next block.
    /// Errors:    false when it cannot be the beginning of a block or cannot hold \a outputSize
    ///            bytes, and when memory is short; the object is then empty.
    bool Initialize(const char* block, int size, int outputSize = kUnknownSize);

    /// Produces the next bytes, \a count unless the block ends or is damaged before.
    ///
    /// Errors: the count is short; 0 when empty and for a count below 1.
    [[nodiscard]] int DecompressOutputBytes(char* out, int count);

    /// Feeds up to \a inputCount further bytes of the block and produces at most \a outCount bytes.
    /// They go behind those that earlier calls of this function produced: \a outBase is the start
    /// of the whole output every time. Once all is fed, bytes may still wait inside; calling on
    /// gives them, until 0 comes.
    ///
    /// Errors: 0 when damaged or empty, but also when the input so far completes no byte.
    [[nodiscard]] int DecompressInputBytes(char* outBase, int inputCount, int outCount);

    /// Frees the decoder and forgets the block.
    void Release();

private:
    /// The next bytes of the block, at most \a count; the properties count but are left out.
    std::span<const unsigned char> NextInput(int count);

    const char* m_input = nullptr;
    int m_inputSize = 0;
    CKvLzmaDecoder m_decoder;
    int m_inputPosition = 0;
    int m_outputTotal = 0;
};
