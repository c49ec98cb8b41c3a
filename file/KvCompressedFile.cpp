#include "file/KvCompressedFile.h"

#include <cstring>

bool KvIsCompressed(const void* data, int size)
{
    return size >= kKvCompressedHeaderSize &&
           std::memcmp(data, kKvCompressedMagic, kKvCompressedMagicSize) == 0;
}

std::uint32_t KvGetUncompressedSize(const void* header)
{
    const auto* bytes = static_cast<const unsigned char*>(header) + kKvCompressedSizeOffset;
    return bytes[0] | std::uint32_t{bytes[1]} << 8 | std::uint32_t{bytes[2]} << 16 |
           std::uint32_t{bytes[3]} << 24;
}
