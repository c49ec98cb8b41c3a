#include "system/KvTimer.h"

#include "platform/KvPlatformCounter.h"

namespace {

constexpr float kFirstSmoothDeltaMs = 33.333332F;
constexpr float kNewDeltaShare = 0.2F;
constexpr float kOldDeltaShare = 0.8F;

}  // namespace

CKvTimer::CKvTimer()
{
    Reset();
}

CKvTimer& CKvTimer::GetInstance()
{
    static CKvTimer* const s_instance = new CKvTimer;
    return *s_instance;
}

void CKvTimer::Update()
{
    if (m_isPaused)
        return;
    InternalUpdate();
    m_smoothDeltaMs = m_updateCount == 0
                          ? kFirstSmoothDeltaMs
                          : m_deltaMs * kNewDeltaShare + m_smoothDeltaMs * kOldDeltaShare;
    ++m_updateCount;
}

void CKvTimer::Pause()
{
    m_isPaused = true;
    InternalUpdate();
}

void CKvTimer::Resume()
{
    m_isPaused = false;
    InternalUpdate();
    m_offsetMs += ToMilliseconds(m_deltaTicks);
}

void CKvTimer::Reset()
{
    m_updateCount = 0;
    m_elapsedTicks = 0;
    m_startCounter = KvPlatformReadCounter();
    m_frequency = KvPlatformCounterFrequency();
}

float CKvTimer::GetCurrent() const
{
    return m_isPaused ? GetAbsolute()
                      : static_cast<float>(ToMilliseconds(ReadElapsed()) - m_offsetMs);
}

float CKvTimer::GetAbsolute() const
{
    return static_cast<float>(m_currentMs - m_offsetMs);
}

void CKvTimer::InternalUpdate()
{
    const std::int64_t elapsedTicks = ReadElapsed();
    m_deltaTicks = elapsedTicks - m_elapsedTicks;
    m_elapsedTicks = elapsedTicks;
    m_currentMs = ToMilliseconds(elapsedTicks);
    m_deltaMs = static_cast<float>(ToMilliseconds(m_deltaTicks));
}

double CKvTimer::ToMilliseconds(std::int64_t ticks) const
{
    return static_cast<double>(ticks) * 1000.0 / static_cast<double>(m_frequency);
}

std::int64_t CKvTimer::ReadElapsed() const
{
    return KvPlatformReadCounter() - m_startCounter;
}
