#include "file/KvLzma.h"

#include <lzma/LzmaDec.h>
#include <lzma/LzmaEnc.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <new>
#include <utility>

#include "core/KvOutOfMemory.h"
#include "file/KvCompressedFile.h"

static_assert(kKvLzmaPropertiesSize == LZMA_PROPS_SIZE);

namespace {

constexpr std::uint32_t kDictionarySize = 1 << 20;

/// The smallest dictionary that the decoder works with.
constexpr std::uint64_t kSmallestDictionary = 1 << 12;

/// Where the dictionary's size stands in the properties, a little-endian u32.
constexpr std::size_t kDictionarySizeOffset = 1;

void* Allocate(void*, std::size_t size)
{
    return std::malloc(size);
}

/// The encoder decides on the content of memory that it has not written, without effect on its
/// output.
void* AllocateZeroed(void*, std::size_t size)
{
    return std::calloc(1, size);
}

void Free(void*, void* address)
{
    std::free(address);
}

ISzAlloc s_decoderMemory = {&Allocate, &Free};
ISzAlloc s_encoderMemory = {&AllocateZeroed, &Free};

using Properties = std::array<unsigned char, kKvLzmaPropertiesSize>;

/// The properties with a dictionary of at most so many bytes.
Properties CapDictionary(const unsigned char* properties, std::uint64_t mostBytes)
{
    Properties capped;
    std::copy_n(properties, capped.size(), capped.begin());
    std::uint32_t size = 0;
    for (std::size_t i = 0; i < sizeof size; ++i)
        size |= std::uint32_t{capped[kDictionarySizeOffset + i]} << (8 * i);
    size = static_cast<std::uint32_t>(std::min<std::uint64_t>(size, mostBytes));
    for (std::size_t i = 0; i < sizeof size; ++i)
        capped[kDictionarySizeOffset + i] = static_cast<unsigned char>(size >> (8 * i));
    return capped;
}

}  // namespace

std::size_t KvLzmaCompress(std::span<const unsigned char> source, std::span<unsigned char> block)
{
    if (block.size() < kKvLzmaPropertiesSize)
        return 0;
    CLzmaEncProps settings;
    LzmaEncProps_Init(&settings);
    settings.dictSize = kDictionarySize;
    settings.numThreads = 1;
    const std::span<unsigned char> stream = block.subspan(kKvLzmaPropertiesSize);
    SizeT streamSize = stream.size();
    SizeT propertiesSize = kKvLzmaPropertiesSize;
    const SRes result =
        LzmaEncode(stream.data(), &streamSize, source.data(), source.size(), &settings,
                   block.data(), &propertiesSize, 0, nullptr, &s_encoderMemory, &s_encoderMemory);
    // After a failure the sizes are no sizes of anything.
    return result == SZ_OK ? propertiesSize + streamSize : 0;
}

struct CKvLzmaDecoder::CState
{
    CState() { LzmaDec_Construct(&decoder); }
    ~CState() { LzmaDec_Free(&decoder, &s_decoderMemory); }
    CState(const CState&) = delete;
    CState& operator=(const CState&) = delete;

    CLzmaDec decoder;

    /// Set by the first error: the SDK's decoder must not be called again after one.
    bool isDamaged = false;
};

CKvLzmaDecoder::CKvLzmaDecoder() = default;
CKvLzmaDecoder::~CKvLzmaDecoder() = default;

bool CKvLzmaDecoder::Begin(const unsigned char* properties, std::uint64_t streamSize,
                           std::uint64_t outputSize)
{
    End();
    if (outputSize > KvLzmaOutputBound(streamSize))
        return false;
    // A dictionary larger than the output is never read, so its size is no reason to allocate it.
    const Properties capped = CapDictionary(properties, std::max(kSmallestDictionary, outputSize));
    std::unique_ptr<CState> state(new (std::nothrow) CState);
    const SRes allocated = state != nullptr ? LzmaDec_Allocate(&state->decoder, capped.data(),
                                                               capped.size(), &s_decoderMemory)
                                            : SZ_ERROR_MEM;
    if (allocated == SZ_ERROR_MEM)
        KvNoteOutOfMemory();
    if (allocated != SZ_OK)
        return false;
    LzmaDec_Init(&state->decoder);
    m_state = std::move(state);
    return true;
}

void CKvLzmaDecoder::End()
{
    m_state.reset();
}

CKvLzmaProgress CKvLzmaDecoder::Decode(std::span<const unsigned char> input,
                                       std::span<unsigned char> output)
{
    if (m_state == nullptr || m_state->isDamaged || output.empty())
        return {};
    // The SDK copies from the input even where there is none; that takes an address.
    const unsigned char nothing = 0;
    SizeT consumed = input.size();
    SizeT produced = output.size();
    ELzmaStatus status = LZMA_STATUS_NOT_SPECIFIED;
    const SRes result = LzmaDec_DecodeToBuf(&m_state->decoder, output.data(), &produced,
                                            input.empty() ? &nothing : input.data(), &consumed,
                                            LZMA_FINISH_ANY, &status);
    m_state->isDamaged = result != SZ_OK;
    return {consumed, produced};
}
