// Byte order and alignment of the binary formats: the in-place swaps with which readers and writers
// convert between little- and big-endian, and the rounding of sizes to whole blocks.

#pragma once

#include <bit>
#include <cstdint>

/// The value with its bytes reversed, written so that compilers make one instruction of it.
constexpr std::uint16_t KvReverseBytes(std::uint16_t value)
{
    return static_cast<std::uint16_t>(value << 8 | value >> 8);
}
constexpr std::uint32_t KvReverseBytes(std::uint32_t value)
{
    return value << 24 | (value & 0xFF00) << 8 | (value >> 8 & 0xFF00) | value >> 24;
}
constexpr std::uint64_t KvReverseBytes(std::uint64_t value)
{
    return std::uint64_t{KvReverseBytes(static_cast<std::uint32_t>(value))} << 32 |
           KvReverseBytes(static_cast<std::uint32_t>(value >> 32));
}

/// Reverses the bytes of one value in place. The types are the language's own, so that every
/// spelling of an integer has its overload whatever the width of long is.
void KvSwapEndian(unsigned short& value);
void KvSwapEndian(short& value);
void KvSwapEndian(unsigned int& value);
void KvSwapEndian(int& value);
void KvSwapEndian(unsigned long& value);
void KvSwapEndian(long& value);
void KvSwapEndian(unsigned long long& value);
void KvSwapEndian(long long& value);
void KvSwapEndian(float& value);

/// Whether numbers of a format must be swapped between this machine's order and the format's.
constexpr bool KvNeedsSwap(bool formatIsBigEndian)
{
    return formatIsBigEndian == (std::endian::native == std::endian::little);
}

/// Reverses the bytes of each element of an array in place.
///
/// Units: \a byteSize is the size of the buffer in bytes, not a count of elements; trailing bytes
///        that do not fill an element stay as they are.
void KvSwapEndian(unsigned short* values, unsigned int byteSize);
void KvSwapEndian(short* values, unsigned int byteSize);
void KvSwapEndian(unsigned int* values, unsigned int byteSize);
void KvSwapEndian(int* values, unsigned int byteSize);
void KvSwapEndian(float* values, unsigned int byteSize);

/// Rounds \a value up to a multiple of \a alignment, which must be a power of two. Wraps to 0 when
/// that multiple is 2^32.
constexpr unsigned int KvAlignValue(unsigned int value, unsigned int alignment)
{
    const unsigned int excess = value & (alignment - 1);
    return excess == 0 ? value : value + (alignment - excess);
}
