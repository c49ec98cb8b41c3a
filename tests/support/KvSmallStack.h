// Runs code that must not recurse.

#pragma once

#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

/// Runs \a work to its end in a thread with a stack of 64 KiB, or the least that the system gives.
/// A recursion of some hundred levels overflows it.
template <class TWork>
void KvRunOnSmallStack(TWork work)
{
    constexpr long kStackBytes = 64L * 1024;
    const long stackBytes = std::max(kStackBytes, sysconf(_SC_THREAD_STACK_MIN));
    const auto run = [](void* argument) -> void* {
        (*static_cast<TWork*>(argument))();
        return nullptr;
    };
    pthread_attr_t attributes;
    pthread_t thread = 0;
    if (pthread_attr_init(&attributes) != 0 ||
        pthread_attr_setstacksize(&attributes, static_cast<std::size_t>(stackBytes)) != 0 ||
        pthread_create(&thread, &attributes, run, &work) != 0)
        std::abort();
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}
