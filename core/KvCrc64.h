// The 64-bit CRC behind every identifier: the Jones polynomial 0xAD93D23594C935A9, processed
// bit-reflected, initial value all ones, no final complement.
// Source: D. T. Jones, "An Improved 64-bit Cyclic Redundancy Check for Protein Sequences", 2002.

#pragma once

#include <cstdint>

/// The value before any byte, and so the CRC of no bytes.
inline constexpr std::uint64_t kKvCrc64Initial = 0xFFFFFFFFFFFFFFFFu;

/// The CRC of \a size bytes as they are. "123456789" gives 0xCAA717168609F281.
std::uint64_t CreateCrc64(const void* data, unsigned int size);

/// The CRC with each byte 'A' to 'Z' taken as 'a' to 'z', starting from \a seed. The result of one
/// call as the seed of the next continues the same CRC.
std::uint64_t CreateCrc64_ToLower(const void* data, unsigned int size, std::uint64_t seed);
