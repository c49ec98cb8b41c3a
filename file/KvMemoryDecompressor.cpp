#include "file/KvMemoryDecompressor.h"

#include <algorithm>
#include <climits>

#include "file/KvCompressedFile.h"

CKvMemoryDecompressor::~CKvMemoryDecompressor() = default;

bool CKvMemoryDecompressor::Initialize(const char* block, int size, int outputSize)
{
    Release();
    if (block == nullptr || size < kKvLzmaPropertiesSize)
        return false;
    const auto streamSize = static_cast<std::uint64_t>(size - kKvLzmaPropertiesSize);
    const std::uint64_t mostOutput =
        outputSize < 0 ? KvLzmaOutputBound(streamSize) : static_cast<std::uint64_t>(outputSize);
    if (!m_decoder.Begin(reinterpret_cast<const unsigned char*>(block), streamSize, mostOutput))
        return false;
    m_input = block;
    m_inputSize = size;
    return true;
}

int CKvMemoryDecompressor::DecompressOutputBytes(char* out, int count)
{
    int produced = 0;
    while (produced < count) {
        const CKvLzmaProgress step = m_decoder.Decode(
            NextInput(m_inputSize), {reinterpret_cast<unsigned char*>(out) + produced,
                                     static_cast<std::size_t>(count - produced)});
        if (step.IsNone())
            break;
        m_inputPosition += static_cast<int>(step.consumed);
        produced += static_cast<int>(step.produced);
    }
    return produced;
}

int CKvMemoryDecompressor::DecompressInputBytes(char* outBase, int inputCount, int outCount)
{
    const int room = std::min(outCount, INT_MAX - m_outputTotal);
    if (room < 1)
        return 0;
    const CKvLzmaProgress step = m_decoder.Decode(
        NextInput(inputCount), {reinterpret_cast<unsigned char*>(outBase) + m_outputTotal,
                                static_cast<std::size_t>(room)});
    m_inputPosition += static_cast<int>(step.consumed);
    m_outputTotal += static_cast<int>(step.produced);
    return static_cast<int>(step.produced);
}

void CKvMemoryDecompressor::Release()
{
    m_decoder.End();
    m_input = nullptr;
    m_inputSize = 0;
    m_inputPosition = 0;
    m_outputTotal = 0;
}

std::span<const unsigned char> CKvMemoryDecompressor::NextInput(int count)
{
    if (m_input == nullptr)
        return {};
    int length = std::min(m_inputSize - m_inputPosition, count);
    if (m_inputPosition == 0) {
        m_inputPosition = kKvLzmaPropertiesSize;
        length -= kKvLzmaPropertiesSize;
    }
    return {reinterpret_cast<const unsigned char*>(m_input) + m_inputPosition,
            static_cast<std::size_t>(std::max(length, 0))};
}
