// Hashing for tables that are keyed by CRCs or by texts from outside. A CRC is linear, so names
// whose values collide in any fixed set of bits are easy to construct, and any fixed hash of texts
// has collisions for the looking; random numbers drawn per process make them miss.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// The random numbers of this process, drawn on first use, which may be before main().
struct CKvHashSalt
{
    CKvHashSalt();

    static const CKvHashSalt& Get()
    {
        static const CKvHashSalt s_salt;
        return s_salt;
    }

    std::uint64_t forHigh;
    std::uint64_t forLow;
    std::uint64_t offset;
};

/// Strongly universal hashing by pair-multiply-shift (Thorup, "High Speed Hashing for Integers and
/// Strings", 2015): for any two keys all pairs of results are equally likely, so any of the 32 bits
/// serve. Different in each process: nothing that is written may depend on it.
///
/// Inline, since a call would cost a look-up as much as the rest of it.
inline std::uint32_t KvSaltedHash(std::uint64_t key)
{
    const CKvHashSalt& salt = CKvHashSalt::Get();
    const std::uint64_t high = key >> 32;
    const std::uint64_t low = key & 0xFFFFFFFF;
    return static_cast<std::uint32_t>(((salt.forHigh + high) * (salt.forLow + low) + salt.offset) >>
                                      32);
}

/// 32 bits of KvSipHash() with numbers of this process as its key.
std::uint32_t KvSaltedHash(std::string_view text);

/// The same as hash functions of the standard containers.
struct CKvSaltedHash
{
    std::size_t operator()(std::uint64_t key) const { return KvSaltedHash(key); }
    std::size_t operator()(std::string_view text) const { return KvSaltedHash(text); }
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
