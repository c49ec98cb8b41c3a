// Hashing for tables that are keyed by CRCs. A CRC is linear, so names whose values collide in any
// fixed set of bits are easy to construct; random numbers drawn per process make them miss.

#pragma once

#include <cstddef>
#include <cstdint>

/// Strongly universal hashing by pair-multiply-shift (Thorup, "High Speed Hashing for Integers and
/// Strings", 2015): for any two keys all pairs of results are equally likely, so any of the 32 bits
/// serve. Different in each process: nothing that is written may depend on it.
std::uint32_t KvSaltedHash(std::uint64_t key);

/// The same as a hash function of the standard containers.
struct CKvSaltedHash
{
    std::size_t operator()(std::uint64_t key) const { return KvSaltedHash(key); }
};
