// The frame timer: running time with pauses taken out, the time between updates and a smoothed
// form of it, all in milliseconds of the platform's counter.

#pragma once

#include <cstdint>

/// A timer that is updated once a frame. All times are floats of milliseconds, computed in double
/// precision from whole ticks and rounded once, when they are asked for.
class CKvTimer
{
public:
    CKvTimer();
    CKvTimer(const CKvTimer&) = default;
    CKvTimer& operator=(const CKvTimer&) = default;
    virtual ~CKvTimer() = default;

    /// The timer of the whole process; made on first use and never destroyed.
    static CKvTimer& GetInstance();

    /// Takes the time of a new frame. Does nothing while paused.
    void Update();

    /// Freezes the time.
    void Pause();

    /// Lets the time go on from where Pause() stopped it. Without a pause before, the time since
    /// the last update counts as one.
    void Resume();

    /// Starts anew at 0 with no updates. The time spent paused so far stays taken out, and a pause
    /// goes on.
    void Reset();

    /// Makes the next update the first one for the smooth delta.
    void ResetUpdateCount() { m_updateCount = 0; }

    /// The running time at this moment without the pauses; frozen while paused.
    [[nodiscard]] float GetCurrent() const;

    /// The running time without the pauses as of the last Update(), Pause() or Resume().
    [[nodiscard]] float GetAbsolute() const;

    /// The time between the last two of Update(), Pause() and Resume(); 0 while paused.
    [[nodiscard]] float GetDelta() const { return m_isPaused ? 0.0F : m_deltaMs; }

    /// The delta, smoothed: 33.333332 after the first update, whatever the delta; from then on a
    /// fifth of the new delta and four fifths of the old value. 0 while paused.
    [[nodiscard]] float GetSmoothDelta() const { return m_isPaused ? 0.0F : m_smoothDeltaMs; }

    /// The updates since the start, the last Reset() or ResetUpdateCount().
    [[nodiscard]] std::uint64_t GetUpdateCount() const { return m_updateCount; }

protected:
    /// Reads the counter and takes current time and delta from it, paused or not.
    void InternalUpdate();

private:
    [[nodiscard]] double ToMilliseconds(std::int64_t ticks) const;
    [[nodiscard]] std::int64_t ReadElapsed() const;

    // In the documented order. Offset and current time are doubles, since the difference of two
    // floats of hours would be off by milliseconds.
    bool m_isPaused = false;
    double m_offsetMs = 0;
    std::uint64_t m_updateCount = 0;
    double m_currentMs = 0;
    float m_deltaMs = 0;
    float m_smoothDeltaMs = 0;
    std::int64_t m_startCounter = 0;
    std::int64_t m_elapsedTicks = 0;
    std::int64_t m_deltaTicks = 0;
    std::int64_t m_frequency = 1;
};
