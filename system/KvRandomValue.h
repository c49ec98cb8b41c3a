// Pseudo-random numbers that repeat: equal seeds give equal sequences on every machine.

#pragma once

/// The linear congruential generator of the C standard's example of rand() (ISO/IEC 9899:1990,
/// 7.10.2.2): 15 bits a call, cheap, and predictable by anybody. Each call advances the seed once.
class CKvRandomValue
{
public:
    explicit CKvRandomValue(int seed = 0) : m_seed(seed) {}
    CKvRandomValue(const CKvRandomValue&) = default;
    CKvRandomValue& operator=(const CKvRandomValue&) = default;
    virtual ~CKvRandomValue() = default;

    void Reseed(int seed) { m_seed = seed; }

    /// 0 to 32767.
    int GetNextInt();

    /// 0 to \a max, both included.
    float GetNextFloat(float max);

    /// \a min to \a max, both included but for the rounding of their difference.
    float GetNextFloat(float min, float max);

    /// Minus \a range to \a range, both included.
    float GetNextFloatCentered(float range);

private:
    /// The next value as a part of 1, from 0 to 1.
    float GetNextPart();

    int m_seed;
};
