#include "system/KvWorkerManager.h"

#include <array>
#include <cassert>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace {

constexpr unsigned int kRingCapacity = 64;

/// How often something is looked at in a row before others get the processor.
constexpr int kSpins = 50;

/// How often a worker without work lets others run before it sleeps.
constexpr int kYieldsBeforeSleep = 4;

/// Stands for the units of all tags.
constexpr unsigned int kAllTags = kKvWorkerUnitTagCount;

/// For counters with one writer at a time, who needs no costlier read-modify-write.
void CountUp(std::atomic<unsigned int>& counter)
{
    counter.store(counter.load(std::memory_order_relaxed) + 1, std::memory_order_release);
}

}  // namespace

struct CKvWorkerManager::SWorker
{
    [[nodiscard]] bool Give(const SWorkUnit& unit);
    void Run();
    [[nodiscard]] bool Take(SWorkUnit& unit);

    [[nodiscard]] unsigned int ReadSubmitted(unsigned int tag) const
    {
        return (tag == kAllTags ? submitted : submittedByTag[tag]).load(std::memory_order_acquire);
    }

    [[nodiscard]] unsigned int ReadCompleted(unsigned int tag) const
    {
        return (tag == kAllTags ? completed : completedByTag[tag]).load(std::memory_order_acquire);
    }

    // In the documented order. A unit is counted as submitted before it can be completed.
    std::atomic<unsigned int> submitted = 0;
    std::atomic<unsigned int> completed = 0;
    std::array<std::atomic<unsigned int>, kKvWorkerUnitTagCount> submittedByTag = {};
    std::array<std::atomic<unsigned int>, kKvWorkerUnitTagCount> completedByTag = {};
    CKvFixedRingBuffer<SWorkUnit, kRingCapacity> queue;

    /// One submitter at a time fills the ring. The worker empties it without the lock, and takes
    /// the lock only to fall asleep over an empty ring.
    std::mutex mutex;
    std::condition_variable wake;
    bool isAsleep = false;
    bool mustStop = false;

    CKvThread thread;
};

bool CKvWorkerManager::SWorker::Give(const SWorkUnit& unit)
{
    if (queue.IsFull())
        return false;
    std::unique_lock lock(mutex);
    if (queue.IsFull())
        return false;
    CountUp(submitted);
    CountUp(submittedByTag[static_cast<unsigned int>(unit.tag)]);
    const bool isPushed = queue.Push(unit);
    assert(isPushed);
    static_cast<void>(isPushed);
    const bool mustWake = std::exchange(isAsleep, false);
    lock.unlock();
    if (mustWake)
        wake.notify_one();
    return true;
}

void CKvWorkerManager::SWorker::Run()
{
    SWorkUnit unit;
    while (Take(unit)) {
        unit.function(unit.argument);
        CountUp(completedByTag[static_cast<unsigned int>(unit.tag)]);
        CountUp(completed);
    }
}

/// Waits for a unit; false when the worker must stop.
bool CKvWorkerManager::SWorker::Take(SWorkUnit& unit)
{
    for (int round = 0; round < kYieldsBeforeSleep; ++round) {
        for (int spin = 0; spin < kSpins; ++spin) {
            if (queue.Pop(unit))
                return true;
        }
        std::this_thread::yield();
    }
    std::unique_lock lock(mutex);
    while (!queue.Pop(unit)) {
        if (mustStop)
            return false;
        isAsleep = true;
        wake.wait(lock);
    }
    isAsleep = false;
    return true;
}

CKvWorkerManager::CKvWorkerManager(unsigned int workerCount)
    : m_workers(std::make_unique<SWorker[]>(workerCount))
{
    while (m_workerCount < workerCount) {
        SWorker& worker = m_workers[m_workerCount];
        if (!worker.thread.Start([&worker] { worker.Run(); }))
            break;
        ++m_workerCount;
    }
}

CKvWorkerManager::~CKvWorkerManager()
{
    WaitForAllCompletion();  // from here on no unit is there that could submit another
    for (unsigned int i = 0; i < m_workerCount; ++i) {
        SWorker& worker = m_workers[i];
        {
            const std::lock_guard lock(worker.mutex);
            worker.mustStop = true;
        }
        worker.wake.notify_one();
        worker.thread.Join();
    }
}

bool CKvWorkerManager::Submit(KvWorkerUnitTag tag, SWorkUnit::Function function, void* argument)
{
    assert(static_cast<unsigned int>(tag) < kKvWorkerUnitTagCount);
    const SWorkUnit unit = {function, argument, tag};
    const unsigned int first = m_nextWorker.fetch_add(1, std::memory_order_relaxed);
    for (unsigned int i = 0; i < m_workerCount; ++i) {
        if (m_workers[(first + i) % m_workerCount].Give(unit))
            return true;
    }
    return false;
}

void CKvWorkerManager::WaitForAllCompletion() const
{
    WaitFor(kAllTags);
}

void CKvWorkerManager::WaitForTagCompletion(KvWorkerUnitTag tag) const
{
    assert(static_cast<unsigned int>(tag) < kKvWorkerUnitTagCount);
    WaitFor(static_cast<unsigned int>(tag));
}

/// Spins before it yields, so that a short wait is short and a long one leaves the processor to the
/// workers.
void CKvWorkerManager::WaitFor(unsigned int tag) const
{
    for (;;) {
        for (int spin = 0; spin < kSpins; ++spin) {
            if (IsCompleted(tag))
                return;
        }
        std::this_thread::yield();
    }
}

/// All completed counts are read before any submitted count. A unit that is seen as completed was
/// submitted before, and so was what it submitted itself; when both sums are the same, all units
/// that could be seen are therefore completed.
bool CKvWorkerManager::IsCompleted(unsigned int tag) const
{
    unsigned int left = 0;
    for (unsigned int i = 0; i < m_workerCount; ++i)
        left -= m_workers[i].ReadCompleted(tag);
    for (unsigned int i = 0; i < m_workerCount; ++i)
        left += m_workers[i].ReadSubmitted(tag);
    return left == 0;
}
