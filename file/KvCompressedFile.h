// The layout of compressed files: a 32-byte header in front of a compressed block. Whoever reads
// one, whole or through a cache, takes it from here.

#pragma once

#include <cstdint>

/// What a compressed file begins with, without terminator.
inline constexpr char kKvCompressedMagic[] = "KVCOMPRESSED";
inline constexpr int kKvCompressedMagicSize = sizeof kKvCompressedMagic - 1;

/// Where the size of the uncompressed data stands, a little-endian u32.
inline constexpr int kKvCompressedSizeOffset = kKvCompressedMagicSize;

/// Where the compressed block begins. Header bytes behind the size have no meaning to readers.
inline constexpr int kKvCompressedHeaderSize = 32;

/// What a compressed block begins with: the properties of its LZMA stream.
inline constexpr int kKvLzmaPropertiesSize = 5;

/// True when \a size is at least kKvCompressedHeaderSize and the bytes begin with the magic;
/// nothing else is looked at.
bool KvIsCompressed(const void* data, int size);

/// The size of the uncompressed data that a header of kKvCompressedHeaderSize bytes claims.
std::uint32_t KvGetUncompressedSize(const void* header);
