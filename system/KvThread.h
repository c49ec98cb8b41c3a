// A thread of one's own, and what else there is to know and say about threads.

#pragma once

#include <functional>
#include <thread>

/// Runs a function on a thread of its own, one after the other. The object is used by the thread
/// that made it.
class CKvThread
{
public:
    CKvThread() = default;
    CKvThread(const CKvThread&) = delete;
    CKvThread& operator=(const CKvThread&) = delete;

    /// Joins.
    virtual ~CKvThread() { Join(); }

    /// Runs \a body on a new thread. Nothing may be thrown by it: there is nobody to catch it.
    ///
    /// Errors: false when the last body was not joined yet and when the system gives no thread.
    [[nodiscard]] bool Start(std::function<void()> body);

    /// Returns when the body is done; at once when none was started. What the body did is then seen
    /// by the caller.
    void Join();

    /// True from Start() until Join().
    [[nodiscard]] bool IsStarted() const { return m_isStarted; }

private:
    // The documented field first.
    bool m_isStarted = false;
    std::thread m_thread;
};

/// How many threads the machine can run at the same time; at least 1.
[[nodiscard]] unsigned int KvGetProcessorCount();

/// Names the calling thread for debuggers. On Linux the first 15 bytes count, and the name of the
/// first thread is also the process's name in process lists.
void KvSetCurrentThreadName(const char* name);
