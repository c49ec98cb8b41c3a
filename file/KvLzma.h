// The LZMA codec as the file layer uses it: the border to the LZMA SDK, whose codes stay behind it.
// A compressed block is kKvLzmaPropertiesSize bytes of properties and a raw stream that has neither
// a stored size nor an end marker.

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

/// Compresses with the encoder's defaults (level 5, lc 3, lp 0, pb 2, 32 fast bytes, no end
/// marker), a dictionary of 1 MiB and one thread. The same input gives the same block on every
/// machine.
///
/// Errors: 0 when the block does not fit or memory is short, else the size of the block.
/// Cost:   11 MB for the time of the call, whatever the size.
[[nodiscard]] std::size_t KvLzmaCompress(std::span<const unsigned char> source,
                                         std::span<unsigned char> block);

/// The most that a stream of this size can give: its format ends at 7,089 bytes of output for one.
constexpr std::uint64_t KvLzmaOutputBound(std::uint64_t streamSize)
{
    return streamSize * 7100;
}

/// How far one step of decoding came.
struct CKvLzmaProgress
{
    std::size_t consumed = 0;
    std::size_t produced = 0;

    bool IsNone() const { return consumed == 0 && produced == 0; }
};

/// Decodes one stream that arrives in pieces. Any bytes may come in: what it is asked to allocate
/// is bounded by what the stream can give, and damage ends the output.
class CKvLzmaDecoder
{
public:
    CKvLzmaDecoder();
    ~CKvLzmaDecoder();
    CKvLzmaDecoder(const CKvLzmaDecoder&) = delete;
    CKvLzmaDecoder& operator=(const CKvLzmaDecoder&) = delete;

    /// Starts a stream of \a streamSize bytes whose output nobody reads beyond \a outputSize;
    /// \a properties are the block's first kKvLzmaPropertiesSize bytes.
    ///
    /// Errors: false for properties that no encoder writes, for more output than such a stream can
    ///         give, and when memory is short; the decoder is then as after End().
    /// Cost:   the dictionary as the properties have it, but no larger than the output.
    [[nodiscard]] bool Begin(const unsigned char* properties, std::uint64_t streamSize,
                             std::uint64_t outputSize);

    /// Frees everything; Decode() gives nothing until the next Begin().
    void End();

    bool IsDecoding() const { return m_state != nullptr; }

    /// Decodes from \a input to \a output as far as both reach. Up to 272 bytes may wait inside
    /// when the input is used up: they come out of further calls, with or without input. No
    /// progress at all in a call with room for output means that the input so far has no more to
    /// give: it is used up, ended by a marker, or damaged. After damage nothing ever comes.
    CKvLzmaProgress Decode(std::span<const unsigned char> input, std::span<unsigned char> output);

private:
    struct CState;
    std::unique_ptr<CState> m_state;
};
