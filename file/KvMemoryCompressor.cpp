#include "file/KvMemoryCompressor.h"

#include <climits>
#include <cstdint>
#include <span>

#include "file/KvLzma.h"

CKvMemoryCompressor::~CKvMemoryCompressor() = default;

int CKvMemoryCompressor::ComputeCompressionBufferSize(const char* /*source*/, int size)
{
    const std::int64_t capacity = std::int64_t{size} + size / 3 + 133;
    return size >= 0 && capacity <= INT_MAX ? static_cast<int>(capacity) : 0;
}

int CKvMemoryCompressor::Compress(const char* source, int size, char* dest, int capacity)
{
    const int needed = ComputeCompressionBufferSize(source, size);
    if (needed == 0 || capacity < needed)
        return 0;
    return static_cast<int>(KvLzmaCompress(
        {reinterpret_cast<const unsigned char*>(source), static_cast<std::size_t>(size)},
        {reinterpret_cast<unsigned char*>(dest), static_cast<std::size_t>(needed)}));
}
