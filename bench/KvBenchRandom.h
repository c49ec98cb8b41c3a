// Pseudo-random numbers of the input generator: integers only, the same on every machine.

#pragma once

#include <cstdint>

/// SplitMix64 (Steele, Lea, Flood: Fast splittable pseudorandom number generators, OOPSLA 2014).
class CKvBenchRandom
{
public:
    explicit CKvBenchRandom(std::uint64_t seed) : m_state(seed) {}

    std::uint64_t Next()
    {
        m_state += 0x9E3779B97F4A7C15U;
        std::uint64_t mixed = m_state;
        mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
        return mixed ^ (mixed >> 31U);
    }

    /// A number from 0 to \a bound - 1; \a bound must not be 0. The bias of the remainder is below
    /// 2^-32 for the bounds used here and of no concern.
    std::uint64_t Below(std::uint64_t bound) { return Next() % bound; }

private:
    std::uint64_t m_state;
};
