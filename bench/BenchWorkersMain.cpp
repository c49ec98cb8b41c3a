// KvBenchWorkers: what it costs to hand a million empty units to worker threads and to wait for
// them, beside the least that this can be done with: one queue behind a mutex, and a plain loop
// that calls the units itself.

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <ctime>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "bench/KvBenchReport.h"
#include "bench/KvBenchRounds.h"
#include "bench/KvBenchStatistics.h"
#include "system/KvWorkerManager.h"

namespace {

constexpr unsigned int kUnits = 1'000'000;
constexpr unsigned int kWorkers = 2;
constexpr std::size_t kRoom = std::size_t{64} * kWorkers;

using Unit = CKvWorkerManager::SWorkUnit;

/// The yardstick, with the same room and the same contract.
class CQueuePool
{
public:
    CQueuePool()
    {
        for (std::thread& thread : m_threads)
            thread = std::thread([this] { Run(); });
    }

    CQueuePool(const CQueuePool&) = delete;
    CQueuePool& operator=(const CQueuePool&) = delete;

    ~CQueuePool()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_mustStop = true;
        }
        m_wake.notify_all();
        for (std::thread& thread : m_threads)
            thread.join();
    }

    bool Submit(const Unit& unit)
    {
        {
            const std::lock_guard lock(m_mutex);
            if (m_queue.size() == kRoom)
                return false;
            m_queue.push_back(unit);
            ++m_left;
        }
        m_wake.notify_one();
        return true;
    }

    void Wait()
    {
        std::unique_lock lock(m_mutex);
        m_done.wait(lock, [this] { return m_left == 0; });
    }

private:
    void Run()
    {
        std::unique_lock lock(m_mutex);
        for (;;) {
            m_wake.wait(lock, [this] { return m_mustStop || !m_queue.empty(); });
            if (m_queue.empty())
                return;
            const Unit unit = m_queue.front();
            m_queue.pop_front();
            lock.unlock();
            unit.function(unit.argument);
            lock.lock();
            if (--m_left == 0)
                m_done.notify_all();
        }
    }

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::condition_variable m_done;
    std::deque<Unit> m_queue;
    unsigned int m_left = 0;
    bool m_mustStop = false;
    std::array<std::thread, kWorkers> m_threads;
};

void DoNothing(void* /*argument*/) noexcept {}

/// Read anew at each call, so that the compiler cannot leave the call out.
Unit::Function volatile g_function = DoNothing;

template <typename TSubmit>
void SubmitAll(TSubmit submit)
{
    for (unsigned int i = 0; i < kUnits; ++i) {
        while (!submit(g_function))
            std::this_thread::yield();
    }
}

struct CWay
{
    const char* what;
    std::function<void()> run;
    std::vector<double> wallNs = {};
    std::vector<double> cpuNs = {};
};

/// Nanoseconds a unit.
void Measure(CWay& way)
{
    const std::clock_t cpu = std::clock();
    const auto wall = std::chrono::steady_clock::now();
    way.run();
    const std::chrono::duration<double, std::nano> took = std::chrono::steady_clock::now() - wall;
    way.wallNs.push_back(took.count() / kUnits);
    way.cpuNs.push_back(static_cast<double>(std::clock() - cpu) * (1e9 / CLOCKS_PER_SEC) / kUnits);
}

}  // namespace

int main(int argc, char** argv)
{
    int rounds = 9;
    if (!KvReadRoundsOption(argc, argv, "KvBenchWorkers", rounds))
        return 2;
    CKvWorkerManager workers(kWorkers);
    CQueuePool pool;
    const auto useWorkers = [&workers] {
        SubmitAll([&workers](Unit::Function function) {
            return workers.Submit(KvWorkerUnitTag::Tag0, function, nullptr);
        });
        workers.WaitForAllCompletion();
    };
    const auto usePool = [&pool] {
        SubmitAll([&pool](Unit::Function function) { return pool.Submit({function, nullptr}); });
        pool.Wait();
    };
    const auto callAll = [] {
        for (unsigned int i = 0; i < kUnits; ++i)
            g_function(nullptr);
    };
    std::vector<CWay> ways = {
        {"workers", useWorkers}, {"queue behind a mutex", usePool}, {"plain loop", callAll}};
    for (int round = 0; round < rounds; ++round) {
        for (CWay& way : ways)
            Measure(way);
    }
    std::printf("medians of %d rounds of 1,000,000 empty units, %u threads, in ns a unit\n\n",
                rounds, kWorkers);
    for (const CWay& way : ways)
        std::printf("%-26s %8.1f elapsed %8.1f CPU\n", way.what, KvMedian(way.wallNs),
                    KvMedian(way.cpuNs));
    std::printf("\n");
    const double elapsed = KvMedian(ways[0].wallNs) / KvMedian(ways[1].wallNs);
    const double cpu = KvMedian(ways[0].cpuNs) / KvMedian(ways[1].cpuNs);
    KvPrintFigures({{"workers / queue behind a mutex, elapsed", elapsed, {}},
                    {"workers / queue behind a mutex, CPU", cpu, {}}});
    return 0;
}
