#include "system/KvTimer.h"

#include <gtest/gtest.h>

#include "platform/KvPlatformCounter.h"
#include "system/KvPerformanceTimer.h"

namespace {

std::int64_t s_now;
std::int64_t s_frequency;

/// Moves time by hand.
class KvTimerTest : public testing::Test
{
protected:
    static void Use(std::int64_t frequency)
    {
        static constexpr CKvCounter kCounter = {[] { return s_now; }, [] { return s_frequency; }};
        s_now = 123456;
        s_frequency = frequency;
        KvPlatformSetCounter(&kCounter);
    }

    ~KvTimerTest() override { KvPlatformSetCounter(nullptr); }
};

TEST_F(KvTimerTest, FollowsUpdatesPausesAndResets)
{
    constexpr auto kUpdate = [](CKvTimer& timer) { timer.Update(); };
    const struct
    {
        std::int64_t passedMs;
        void (*step)(CKvTimer& timer);
        float current, absolute, delta, smoothDelta;
        std::uint64_t updateCount;
    } kRows[] = {
        {0, [](CKvTimer& /*timer*/) {}, 0, 0, 0, 0, 0},
        {10, kUpdate, 10, 10, 10, 33.333332F, 1},
        {20, kUpdate, 30, 30, 20, 30.666666F, 2},
        {10, [](CKvTimer& timer) { timer.Pause(); }, 40, 40, 0, 0, 2},
        {100, kUpdate, 40, 40, 0, 0, 2},
        {0, [](CKvTimer& timer) { timer.Resume(); }, 40, 40, 100, 30.666666F, 2},
        {10, kUpdate, 50, 50, 10, 26.533333F, 3},
        {10, [](CKvTimer& timer) { timer.ResetUpdateCount(); }, 60, 50, 10, 26.533333F, 0},
        {0, kUpdate, 60, 60, 10, 33.333332F, 1},
        {90, [](CKvTimer& timer) { timer.Reset(); }, -100, 60, 10, 33.333332F, 0},
        {130, kUpdate, 30, 30, 130, 33.333332F, 1},
    };
    Use(1'000'000);
    CKvTimer timer;
    for (const auto& row : kRows) {
        SCOPED_TRACE(&row - kRows);
        s_now += row.passedMs * 1000;
        row.step(timer);
        EXPECT_FLOAT_EQ(timer.GetCurrent(), row.current);
        EXPECT_FLOAT_EQ(timer.GetAbsolute(), row.absolute);
        EXPECT_FLOAT_EQ(timer.GetDelta(), row.delta);
        EXPECT_FLOAT_EQ(timer.GetSmoothDelta(), row.smoothDelta);
        EXPECT_EQ(timer.GetUpdateCount(), row.updateCount);
    }
}

TEST_F(KvTimerTest, KeepsPartsOfAMillisecondAfterAMonthOfPauses)
{
    Use(1'000'000'000);
    CKvTimer timer;
    for (int day = 0; day < 30; ++day) {
        timer.Pause();
        s_now += std::int64_t{86'400'000'000'001};
        timer.Resume();
        s_now += 250'000;
    }
    timer.Pause();
    EXPECT_NEAR(timer.GetCurrent(), 7.5F, 1e-4F);
}

TEST_F(KvTimerTest, TheStopwatchMeasuresInWholeMillisecondsAndAll64Bits)
{
    Use(1'000'000'000);
    CKvPerformanceTimer timer;
    timer.Start();
    s_now += (std::int64_t{1} << 62) + 999'999;
    timer.Stop();
    EXPECT_EQ(timer.GetTicksCount(), (std::uint64_t{1} << 62) + 999'999);
    EXPECT_EQ(timer.GetMilliseconds(), 4611686018427.0F);
    Use(1'000'000);
    timer.Start();
    s_now += 1999;
    timer.Stop();
    EXPECT_EQ(timer.GetMilliseconds(), 1.0F);
}

}  // namespace
