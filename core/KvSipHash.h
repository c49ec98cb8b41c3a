// The keyed hash SipHash-2-4: without the key nobody can construct texts that collide.
// Source: J.-P. Aumasson and D. J. Bernstein, "SipHash: a fast short-input PRF", INDOCRYPT 2012.

#pragma once

#include <cstdint>
#include <string_view>

/// The key's two halves are its bytes as little-endian numbers.
[[nodiscard]] std::uint64_t KvSipHash(std::uint64_t key0, std::uint64_t key1,
                                      std::string_view text);
