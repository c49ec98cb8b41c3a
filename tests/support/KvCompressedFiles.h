// Compressed blocks and files as tests want them. For programs that are linked with kv_file.

#pragma once

#include <cstdint>
#include <string>

#include "file/KvCompressedFile.h"
#include "file/KvMemoryCompressor.h"

/// The compressed block of these bytes.
inline std::string KvCompressBlock(const std::string& bytes)
{
    const int size = static_cast<int>(bytes.size());
    const int capacity = CKvMemoryCompressor::ComputeCompressionBufferSize(bytes.data(), size);
    std::string block(static_cast<std::size_t>(capacity), '\0');
    block.resize(static_cast<std::size_t>(
        CKvMemoryCompressor::Compress(bytes.data(), size, block.data(), capacity)));
    return block;
}

/// A little-endian number as bytes.
inline std::string KvLittleEndian(std::uint64_t value, int sizeBytes)
{
    std::string bytes;
    for (int i = 0; i < sizeBytes; ++i)
        bytes += static_cast<char>(value >> (8 * i));
    return bytes;
}

/// A compressed file of a block whose header claims this many bytes.
inline std::string KvCompressedFile(const std::string& block, std::uint32_t claimedSize)
{
    std::string file = kKvCompressedMagic + KvLittleEndian(claimedSize, 4);
    file.resize(kKvCompressedHeaderSize);
    return file + block;
}

/// The compressed file of these bytes.
inline std::string KvCompressFile(const std::string& bytes)
{
    return KvCompressedFile(KvCompressBlock(bytes), static_cast<std::uint32_t>(bytes.size()));
}
