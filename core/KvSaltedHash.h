// Hashing for tables that are keyed by CRCs. A CRC is linear, so names whose values collide in any
// fixed set of bits are easy to construct; a random multiplier per process makes them miss.

#pragma once

#include <cstddef>
#include <cstdint>

/// Multiplicative hashing with a random odd multiplier (Dietzfelbinger et al., "A Reliable
/// Randomized Algorithm for the Closest-Pair Problem", 1997): 32 well-mixed bits, different in each
/// process. Nothing that is written may depend on them.
std::uint32_t KvSaltedHash(std::uint64_t key);

/// The same as a hash function of the standard containers.
struct CKvSaltedHash
{
    std::size_t operator()(std::uint64_t key) const { return KvSaltedHash(key); }
};
