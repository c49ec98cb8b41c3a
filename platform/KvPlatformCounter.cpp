#include "platform/KvPlatformCounter.h"

#include <chrono>

namespace {

using Clock = std::chrono::steady_clock;
using Nanoseconds = std::chrono::nanoseconds;

constexpr CKvCounter kHostCounter = {
    [] {
        const auto sinceStart = Clock::now().time_since_epoch();
        return std::int64_t{std::chrono::duration_cast<Nanoseconds>(sinceStart).count()};
    },
    [] { return std::int64_t{Nanoseconds::period::den}; },
};

const CKvCounter* s_counter = &kHostCounter;

}  // namespace

std::int64_t KvPlatformReadCounter()
{
    return s_counter->read();
}

std::int64_t KvPlatformCounterFrequency()
{
    return s_counter->frequency();
}

void KvPlatformSetCounter(const CKvCounter* counter)
{
    s_counter = counter != nullptr ? counter : &kHostCounter;
}
