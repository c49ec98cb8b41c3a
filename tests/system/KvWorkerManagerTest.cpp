#include "system/KvWorkerManager.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "system/KvWaitEvent.h"

namespace {

/// One for each tag: units add to it, and some submit another unit of the same tag.
struct CLoad
{
    CKvWorkerManager* workers;
    KvWorkerUnitTag tag;
    std::atomic<unsigned int> done = 0;
};

void Work(void* argument) noexcept
{
    static_cast<CLoad*>(argument)->done.fetch_add(1, std::memory_order_relaxed);
}

void WorkTwice(void* argument) noexcept
{
    auto* load = static_cast<CLoad*>(argument);
    if (!load->workers->Submit(load->tag, Work, load))
        Work(load);
    Work(load);
}

TEST(KvWorkerManagerTest, WaitsSeeAllUnitsOfManyThreadsAndOfUnits)
{
    constexpr unsigned int kThreads = 3;
    constexpr unsigned int kUnitsOfATag = 1500;
    CKvWorkerManager workers(3);
    ASSERT_EQ(workers.GetWorkerCount(), 3U);
    std::array<CLoad, kKvWorkerUnitTagCount> loads;
    for (unsigned int i = 0; i < loads.size(); ++i) {
        loads[i].workers = &workers;
        loads[i].tag = static_cast<KvWorkerUnitTag>(i);
    }
    const auto submitAll = [&loads, &workers] {
        for (unsigned int i = 0; i < kUnitsOfATag * loads.size(); ++i) {
            CLoad& load = loads[i % loads.size()];
            while (!workers.Submit(load.tag, i % 3 == 0 ? WorkTwice : Work, &load))
                std::this_thread::yield();
        }
    };
    {
        std::array<CKvThread, kThreads> submitters;
        for (CKvThread& submitter : submitters) {
            ASSERT_TRUE(submitter.Start(submitAll));
            EXPECT_FALSE(submitter.Start([] {}));
        }
    }
    constexpr unsigned int kDone = kThreads * (kUnitsOfATag + kUnitsOfATag / 3);
    workers.WaitForTagCompletion(KvWorkerUnitTag::Tag3);
    EXPECT_EQ(loads[3].done, kDone);
    workers.WaitForAllCompletion();
    for (const CLoad& load : loads)
        EXPECT_EQ(load.done, kDone);
}

/// A worker that stands still until it may go on, and then notes who came in which order.
struct CGate
{
    CKvWaitEvent isReached;
    CKvWaitEvent mayGoOn;
    std::vector<int> numbers;
};

struct CNumber
{
    CGate* gate;
    int number;
};

TEST(KvWorkerManagerTest, AFullRingRefusesAndItsUnitsAreDoneInOrderBeforeTheManagerGoes)
{
    CGate gate;
    EXPECT_TRUE(gate.isReached.Test());
    gate.isReached.Wait();
    gate.isReached.Clear();
    gate.mayGoOn.Clear();
    std::vector<CNumber> arguments;
    for (int i = 0; i <= 64; ++i)
        arguments.push_back({&gate, i});
    const auto note = [](void* argument) noexcept {
        const auto* number = static_cast<CNumber*>(argument);
        number->gate->numbers.push_back(number->number);
    };
    {
        CKvWorkerManager workers(1);
        const auto standStill = [](void* argument) noexcept {
            static_cast<CGate*>(argument)->isReached.Set();
            static_cast<CGate*>(argument)->mayGoOn.Wait();
        };
        ASSERT_TRUE(workers.Submit(KvWorkerUnitTag::Tag7, standStill, &gate));
        gate.isReached.Wait();
        for (int i = 0; i <= 64; ++i)
            EXPECT_EQ(workers.Submit(KvWorkerUnitTag::Tag0, note, &arguments[std::size_t(i)]),
                      i < 64);
        gate.mayGoOn.Set();
    }
    ASSERT_EQ(gate.numbers.size(), 64U);
    for (int i = 0; i < 64; ++i)
        EXPECT_EQ(gate.numbers[std::size_t(i)], i);
}

}  // namespace
