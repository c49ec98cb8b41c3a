// Compressed blocks of any bytes, expanded whole and in pieces.

#include <span>
#include <vector>

#include "file/KvCompressedFile.h"
#include "file/KvMemoryDecompressor.h"
#include "fuzz/KvFuzz.h"

namespace {

using Bytes = std::vector<unsigned char>;

/// Expands with the decoder; pieces are of input and output alike. Exactly sized, so that the
/// sanitizer sees one byte too many.
Bytes Decode(const Bytes& block, std::size_t size, std::size_t piece)
{
    constexpr std::size_t kProperties = kKvLzmaPropertiesSize;
    CKvLzmaDecoder decoder;
    if (block.size() < kProperties ||
        !decoder.Begin(block.data(), block.size() - kProperties, size))
        return {};
    Bytes output(size);
    std::span<const unsigned char> left = std::span(block).subspan(kProperties);
    std::size_t produced = 0;
    while (produced < size) {
        const auto input = left.first(std::min(piece, left.size()));
        const std::size_t room = std::min(piece, size - produced);
        const CKvLzmaProgress step =
            decoder.Decode(input, std::span(output).subspan(produced, room));
        KvRequire(step.consumed <= input.size() && step.produced <= room, "a step stays in bounds");
        if (step.IsNone())
            break;
        left = left.subspan(step.consumed);
        produced += step.produced;
    }
    output.resize(produced);
    return output;
}

/// Expands with the decompressor, in pieces of the output or of both.
Bytes Expand(const Bytes& block, std::size_t size, int piece, bool byInput)
{
    CKvMemoryDecompressor decompressor;
    decompressor.Initialize(reinterpret_cast<const char*>(block.data()),
                            static_cast<int>(block.size()), static_cast<int>(size));
    Bytes output(size);
    char* const begin = reinterpret_cast<char*>(output.data());
    std::size_t produced = 0;
    for (std::size_t calls = block.size() + size + 1; calls > 0 && produced < size; --calls) {
        const int room = std::min(piece, static_cast<int>(size - produced));
        const int count = byInput ? decompressor.DecompressInputBytes(begin, piece, room)
                                  : decompressor.DecompressOutputBytes(begin + produced, room);
        KvRequire(count >= 0 && count <= room, "no more is produced than asked for");
        produced += static_cast<std::size_t>(count);
    }
    output.resize(produced);
    return output;
}

void RequireSameBeginning(const Bytes& one, const Bytes& other)
{
    const std::size_t common = std::min(one.size(), other.size());
    KvRequire(
        std::equal(one.begin(), one.begin() + static_cast<std::ptrdiff_t>(common), other.begin()),
        "pieces expand to the same bytes, as far as a damaged block gives any");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CKvFuzzInput input(data, size);
    const auto outputSize = static_cast<std::size_t>(input.TakeNumber() % 4096);
    const int piece = 1 + static_cast<int>(input.TakeByte());
    const std::string rest = input.TakeRest();
    const Bytes block(rest.begin(), rest.end());
    if (!block.empty() && KvHasLargeModel(block[0]) && outputSize > 8)
        return 0;
    const Bytes whole = Decode(block, outputSize, outputSize + block.size());
    RequireSameBeginning(whole, Decode(block, outputSize, static_cast<std::size_t>(piece)));
    RequireSameBeginning(whole, Expand(block, outputSize, piece, false));
    RequireSameBeginning(whole, Expand(block, outputSize, piece, true));
    return 0;
}
