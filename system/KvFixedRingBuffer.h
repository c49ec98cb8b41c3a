// A queue of fixed capacity between two threads.

#pragma once

#include <array>
#include <atomic>
#include <bit>

/// One thread at a time may push and one may pop, both at once. What was pushed is popped in the
/// same order; nothing is allocated and nothing waits.
template <typename T, unsigned int kCapacity>
class CKvFixedRingBuffer
{
    static_assert(std::has_single_bit(kCapacity), "the counts must go on where 32 bits end");

public:
    /// For any thread, of which all but the popping one may find it out of date at once.
    [[nodiscard]] bool IsEmpty() const { return GetCount() == 0; }

    /// For any thread, of which all but the pushing one may find it out of date at once.
    [[nodiscard]] bool IsFull() const { return GetCount() == kCapacity; }

    /// Errors: false when the ring is full.
    [[nodiscard]] bool Push(const T& element)
    {
        const unsigned int pushed = m_pushed.load(std::memory_order_relaxed);
        if (pushed - m_popped.load(std::memory_order_acquire) == kCapacity)
            return false;
        m_elements[pushed % kCapacity] = element;
        m_pushed.store(pushed + 1, std::memory_order_release);
        return true;
    }

    /// Errors: false when the ring is empty; \a element is then as it was.
    [[nodiscard]] bool Pop(T& element)
    {
        const unsigned int popped = m_popped.load(std::memory_order_relaxed);
        if (m_pushed.load(std::memory_order_acquire) == popped)
            return false;
        element = m_elements[popped % kCapacity];
        m_popped.store(popped + 1, std::memory_order_release);
        return true;
    }

private:
    [[nodiscard]] unsigned int GetCount() const
    {
        // The pops first: a pop between the two loads must not make the count negative.
        const unsigned int popped = m_popped.load(std::memory_order_acquire);
        return m_pushed.load(std::memory_order_acquire) - popped;
    }

    // In the documented order: the elements, then how many were ever pushed and popped.
    std::array<T, kCapacity> m_elements = {};
    std::atomic<unsigned int> m_pushed = 0;
    std::atomic<unsigned int> m_popped = 0;
};
