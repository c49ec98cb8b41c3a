#include "system/KvThread.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <array>

namespace {

TEST(KvThreadTest, ALongNameIsCutAndOnlyItsOwnThreadHasIt)
{
    using CName = std::array<char, 64>;
    const auto readName = [](CName& name) {
        pthread_getname_np(pthread_self(), name.data(), name.size());
    };
    CName mine = {};
    CName theirs = {};
    CName mineAfter = {};
    readName(mine);
    CKvThread thread;
    ASSERT_TRUE(thread.Start([&] {
        KvSetCurrentThreadName("0123456789abcdefghij");
        readName(theirs);
    }));
    thread.Join();
    readName(mineAfter);
    EXPECT_STREQ(theirs.data(), "0123456789abcde");
    EXPECT_EQ(mineAfter, mine);
    EXPECT_FALSE(thread.IsStarted());
    EXPECT_GE(KvGetProcessorCount(), 1U);
}

}  // namespace
