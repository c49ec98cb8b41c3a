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

/// A policy of TKvHashTable with its start slots salted, for tables whose keys come from outside.
/// A key that is no number has an overload of KvSaltedHash() beside its type.
template <class TPolicy>
class TKvSaltedPolicy : public TPolicy
{
public:
    static int CreateHash(const typename TPolicy::Key& key)
    {
        return static_cast<int>(KvSaltedHash(key));
    }
};
