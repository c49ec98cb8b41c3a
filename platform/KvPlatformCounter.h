// The counter that time is measured with. It only ever rises and has nothing to do with the date.

#pragma once

#include <cstdint>

/// A counter and how often a second it rises; the frequency is above 0.
struct CKvCounter
{
    std::int64_t (*read)();
    std::int64_t (*frequency)();
};

std::int64_t KvPlatformReadCounter();
std::int64_t KvPlatformCounterFrequency();

/// Sets the counter that the two functions above use, so that a test can move time by hand. Null
/// brings the host's own back. To be set while no other thread measures.
///
/// Ownership: the counter stays the caller's and must live until another one is set.
void KvPlatformSetCounter(const CKvCounter* counter);
