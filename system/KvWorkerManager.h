// A fixed set of threads that carry out small units of work, each from a ring of its own.
//
// The manager counts for each worker what was submitted to it and what it has completed, in all and
// for each tag; waiting is waiting for the counts to meet.

#pragma once

#include <atomic>
#include <memory>

#include "system/KvFixedRingBuffer.h"
#include "system/KvThread.h"

/// What units are told apart by when somebody waits for some of them. The meaning is the caller's.
enum class KvWorkerUnitTag : unsigned int
{
    Tag0,
    Tag1,
    Tag2,
    Tag3,
    Tag4,
    Tag5,
    Tag6,
    Tag7
};

inline constexpr unsigned int kKvWorkerUnitTagCount = 8;

/// Submit() and the waits may be called from any thread at the same time.
class CKvWorkerManager
{
public:
    struct SWorkUnit
    {
        /// Nothing may be thrown by a unit: there is nobody to catch it.
        using Function = void (*)(void* argument) noexcept;

        Function function = nullptr;
        void* argument = nullptr;
        KvWorkerUnitTag tag = KvWorkerUnitTag::Tag0;
    };

    /// Starts \a workerCount threads, or as many as the system gives.
    explicit CKvWorkerManager(unsigned int workerCount = KvGetProcessorCount());
    CKvWorkerManager(const CKvWorkerManager&) = delete;
    CKvWorkerManager& operator=(const CKvWorkerManager&) = delete;

    /// Carries out all that was submitted, also by units meanwhile, and ends the threads.
    ~CKvWorkerManager();

    /// The threads that were started: 0 when the system gave none, nothing can then be submitted.
    [[nodiscard]] unsigned int GetWorkerCount() const { return m_workerCount; }

    /// Has a worker call \a function with \a argument. Workers get units in turn; one worker's
    /// units are carried out in the order in which it got them.
    ///
    /// Ownership: what the argument refers to must live until the unit is completed.
    /// Errors:    false when every worker's ring of 64 units is full; it never waits, so that units
    ///            may submit, too. A unit then does the work itself, others may also yield and try
    ///            again.
    [[nodiscard]] bool Submit(KvWorkerUnitTag tag, SWorkUnit::Function function, void* argument);

    /// Returns when all units are completed, also those that units submitted; what they did is then
    /// seen by the caller. While other threads go on submitting, it may wait for their units, too.
    ///
    /// Not for units, which would wait for their own end.
    void WaitForAllCompletion() const;

    /// The same for the units of one tag and those of the tag that they submitted. Not for units of
    /// any tag: what they wait for may lie in the ring behind them.
    void WaitForTagCompletion(KvWorkerUnitTag tag) const;

private:
    struct SWorker;

    void WaitFor(unsigned int tag) const;
    [[nodiscard]] bool IsCompleted(unsigned int tag) const;

    // In the documented order.
    unsigned int m_workerCount = 0;
    std::unique_ptr<SWorker[]> m_workers;

    /// Whose turn it is, counted on and on.
    std::atomic<unsigned int> m_nextWorker = 0;
};
