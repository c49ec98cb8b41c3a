#include "tests/support/KvSmallStack.h"

#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr long kStackBytes = 64L * 1024;

void* Run(void* work)
{
    (*static_cast<const std::function<void()>*>(work))();
    return nullptr;
}

}  // namespace

void KvRunOnSmallStack(const std::function<void()>& work)
{
    const long stackBytes = std::max(kStackBytes, sysconf(_SC_THREAD_STACK_MIN));
    pthread_attr_t attributes;
    pthread_t thread = 0;
    void* argument = const_cast<std::function<void()>*>(&work);
    if (pthread_attr_init(&attributes) != 0 ||
        pthread_attr_setstacksize(&attributes, static_cast<std::size_t>(stackBytes)) != 0 ||
        pthread_create(&thread, &attributes, &Run, argument) != 0)
        std::abort();
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}
