#include "system/KvPerformanceTimer.h"

#include "platform/KvPlatformCounter.h"

void CKvPerformanceTimer::Start()
{
    m_start = KvPlatformReadCounter();
}

void CKvPerformanceTimer::Stop()
{
    m_stop = KvPlatformReadCounter();
}

std::uint64_t CKvPerformanceTimer::GetTicksCount() const
{
    return static_cast<std::uint64_t>(m_stop) - static_cast<std::uint64_t>(m_start);
}

std::uint64_t CKvPerformanceTimer::GetFrequency() const
{
    return static_cast<std::uint64_t>(KvPlatformCounterFrequency());
}

float CKvPerformanceTimer::GetMilliseconds() const
{
    // Whole seconds and the rest apart: their product with 1000 does not fit for long intervals.
    const std::uint64_t ticks = GetTicksCount();
    const std::uint64_t frequency = GetFrequency();
    const std::uint64_t ms = ticks / frequency * 1000 + ticks % frequency * 1000 / frequency;
    return static_cast<float>(ms);
}
