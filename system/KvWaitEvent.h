// A flag that one thread sets and others wait for.

#pragma once

#include <atomic>

/// Set at construction. All functions may be called from any thread; what a thread did before Set()
/// is seen by those whose Wait() or Test() saw it.
class CKvWaitEvent
{
public:
    void Set()
    {
        m_state.store(1);
        m_state.notify_all();
    }

    void Clear() { m_state.store(0); }

    [[nodiscard]] bool Test() const { return m_state.load() != 0; }

    /// Returns when the event is set, at once when it is. The thread sleeps meanwhile. An event
    /// that is set and cleared again may pass unseen.
    void Wait() const { m_state.wait(0); }

private:
    /// 1 set, 0 clear.
    std::atomic<int> m_state = 1;
};
