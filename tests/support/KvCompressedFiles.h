// Compressed blocks and files as tests want them, and the whole of any file. For programs that are
// linked with kv_file.

#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "file/KvCompressedFile.h"
#include "file/KvFile.h"
#include "file/KvMemoryCompressor.h"

inline std::string KvCompressBlock(const std::string& bytes)
{
    const int size = static_cast<int>(bytes.size());
    std::string block(bytes.size() * 2 + 133, '\0');
    block.resize(static_cast<std::size_t>(CKvMemoryCompressor::Compress(
        bytes.data(), size, block.data(), static_cast<int>(block.size()))));
    return block;
}

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

inline std::string KvCompressFile(const std::string& bytes)
{
    return KvCompressedFile(KvCompressBlock(bytes), static_cast<std::uint32_t>(bytes.size()));
}

/// All bytes of a file, expanded; "<null>" when it is refused.
inline std::string KvReadWhole(CKvFile& file)
{
    int size = -1;
    const std::unique_ptr<unsigned char[]> bytes(
        static_cast<unsigned char*>(file.ReadEntireFile(size)));
    if (bytes == nullptr)
        return size == 0 ? "<null>" : "<null with a size>";
    return {reinterpret_cast<const char*>(bytes.get()), static_cast<std::size_t>(size)};
}
