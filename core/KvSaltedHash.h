// Hashing for tables that are keyed by CRCs. A CRC is linear, so names whose values collide in any
// fixed set of bits are easy to construct; random numbers drawn per process make them miss.

#pragma once

#include <cstddef>
#include <cstdint>

/// The random numbers of this process.
struct CKvHashSalt
{
    CKvHashSalt();

    std::uint64_t forHigh;
    std::uint64_t forLow;
    std::uint64_t offset;
};

/// Strongly universal hashing by pair-multiply-shift (Thorup, "High Speed Hashing for Integers and
/// Strings", 2015): for any two keys all pairs of results are equally likely, so any of the 32 bits
/// serve. Different in each process: nothing that is written may depend on it.
///
/// Inline, since a call would cost a look-up as much as the rest of it. The salt is drawn on first
/// use, which may be before main().
inline std::uint32_t KvSaltedHash(std::uint64_t key)
{
    static const CKvHashSalt s_salt;
    const std::uint64_t high = key >> 32;
    const std::uint64_t low = key & 0xFFFFFFFF;
    return static_cast<std::uint32_t>(
        ((s_salt.forHigh + high) * (s_salt.forLow + low) + s_salt.offset) >> 32);
}

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
