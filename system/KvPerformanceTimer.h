// The stopwatch: one interval of the platform's counter, in the full 64 bits.

#pragma once

#include <cstdint>

class CKvPerformanceTimer
{
public:
    void Start();
    void Stop();

    /// From the last Start() to the last Stop(); without meaning before both.
    [[nodiscard]] std::uint64_t GetTicksCount() const;

    /// Ticks a second.
    [[nodiscard]] std::uint64_t GetFrequency() const;

    /// The interval in whole milliseconds, rounded down.
    [[nodiscard]] float GetMilliseconds() const;

private:
    // In the documented order.
    std::int64_t m_start = 0;
    std::int64_t m_stop = 0;
};
