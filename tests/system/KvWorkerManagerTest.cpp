#include "system/KvWorkerManager.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <array>
#include <string>
#include <vector>

#include "system/KvWaitEvent.h"

namespace {

TEST(KvThreadTest, ALongNameIsCutAndOnlyItsOwnThreadHasIt)
{
    const auto readName = [] {
        std::array<char, 64> name = {};
        pthread_getname_np(pthread_self(), name.data(), name.size());
        return std::string(name.data());
    };
    const std::string mine = readName();
    CKvThread thread;
    ASSERT_TRUE(thread.Start([&] {
        KvSetCurrentThreadName("0123456789abcdefghij");
        EXPECT_EQ(readName(), "0123456789abcde");
    }));
    thread.Join();
    EXPECT_EQ(readName(), mine);
    EXPECT_FALSE(thread.IsStarted());
}

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
        for (CKvThread& submitter : submitters)
            ASSERT_TRUE(submitter.Start(submitAll) && !submitter.Start(submitAll));
    }
    constexpr unsigned int kDone = kThreads * (kUnitsOfATag + kUnitsOfATag / 3);
    workers.WaitForTagCompletion(KvWorkerUnitTag::Tag3);
    EXPECT_EQ(loads[3].done, kDone);
    workers.WaitForAllCompletion();
    for (const CLoad& load : loads)
        EXPECT_EQ(load.done, kDone);
}

/// A worker that stands still until it may go on.
struct CGate
{
    CKvWaitEvent isReached;
    CKvWaitEvent mayGoOn;
};

std::vector<void*> s_done;

TEST(KvWorkerManagerTest, AFullRingRefusesAndItsUnitsAreDoneInOrderBeforeTheManagerGoes)
{
    CGate gate;
    gate.isReached.Wait();  // set from the beginning
    gate.isReached.Clear();
    gate.mayGoOn.Clear();
    const auto standStill = [](void* argument) noexcept {
        static_cast<CGate*>(argument)->isReached.Set();
        static_cast<CGate*>(argument)->mayGoOn.Wait();
    };
    const auto note = [](void* argument) noexcept { s_done.push_back(argument); };
    std::array<char, 65> units = {};
    std::vector<void*> accepted;
    {
        CKvWorkerManager workers(1);
        ASSERT_TRUE(workers.Submit(KvWorkerUnitTag::Tag7, standStill, &gate));
        gate.isReached.Wait();
        for (char& unit : units)
            if (workers.Submit(KvWorkerUnitTag::Tag0, note, &unit))
                accepted.push_back(&unit);
        gate.mayGoOn.Set();
    }
    EXPECT_EQ(accepted.size(), 64U);
    EXPECT_EQ(s_done, accepted);
}

}  // namespace
