#include "system/KvThread.h"

#include <algorithm>
#include <new>
#include <system_error>
#include <utility>

#include "platform/KvPlatformThreads.h"

bool CKvThread::Start(std::function<void()> body)
{
    if (m_isStarted)
        return false;
    try {
        m_thread = std::thread(std::move(body));
    } catch (const std::system_error&) {
        return false;
    } catch (const std::bad_alloc&) {
        return false;
    }
    m_isStarted = true;
    return true;
}

void CKvThread::Join()
{
    if (!m_isStarted)
        return;
    m_thread.join();
    m_isStarted = false;
}

unsigned int KvGetProcessorCount()
{
    return std::max(std::thread::hardware_concurrency(), 1U);
}

void KvSetCurrentThreadName(const char* name)
{
    KvPlatformSetThreadName(name);
}
