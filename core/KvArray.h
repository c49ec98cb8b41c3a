// The growable array that records, documents and results are made of. It owns its elements; an
// array of pointers owns the pointers only, never what they point to. The element type may be
// incomplete where an array is declared, so a record can hold an array of its own kind.

#pragma once

#include <algorithm>
#include <cassert>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

/// An array that grows by a third: the first append makes room for growth-step elements, an append
/// to a full array raises the capacity to (4 * capacity + 4) / 3.
///
/// References and pointers to elements are valid until the next Add(), RemoveAt() or Clear().
///
/// Errors: when no memory is left (or INT_MAX elements are held) Add() throws std::bad_alloc and
///         the array is as it was.
template <typename T>
class CKvArray
{
public:
    static constexpr int kDefaultGrowthStep = 16;

    CKvArray() noexcept = default;

    /// The copy has no spare capacity and the growth step of \a other.
    CKvArray(const CKvArray& other) : m_growthStep(other.m_growthStep)
    {
        if (other.IsEmpty())
            return;
        CKvArray copy;
        copy.Allocate(other.m_count);
        std::uninitialized_copy_n(other.m_elements, other.m_count, copy.m_elements);
        copy.m_count = other.m_count;
        copy.m_growthStep = other.m_growthStep;
        Swap(copy);
    }

    /// Leaves \a other as after Clear().
    CKvArray(CKvArray&& other) noexcept { Swap(other); }

    ~CKvArray() { Clear(); }

    CKvArray& operator=(const CKvArray& other)
    {
        if (this != &other) {
            CKvArray copy(other);
            Swap(copy);
        }
        return *this;
    }

    /// Leaves \a other as after Clear().
    CKvArray& operator=(CKvArray&& other) noexcept
    {
        CKvArray taken(std::move(other));
        Swap(taken);
        return *this;
    }

    /// Appends a copy. The element may be one of this array's own.
    void Add(const T& element) { Append(element); }
    void Add(T&& element) { Append(std::move(element)); }

    [[nodiscard]] int GetCount() const noexcept { return m_count; }
    [[nodiscard]] int GetCapacity() const noexcept { return m_capacity; }
    [[nodiscard]] bool IsEmpty() const noexcept { return m_count == 0; }

    [[nodiscard]] T& operator[](int index)
    {
        assert(index >= 0 && index < m_count);
        return m_elements[index];
    }
    [[nodiscard]] const T& operator[](int index) const
    {
        assert(index >= 0 && index < m_count);
        return m_elements[index];
    }

    /// The first element; null when nothing is allocated.
    [[nodiscard]] T* GetData() noexcept { return m_elements; }
    [[nodiscard]] const T* GetData() const noexcept { return m_elements; }

    [[nodiscard]] T* begin() noexcept { return m_elements; }
    [[nodiscard]] T* end() noexcept { return m_elements + m_count; }
    [[nodiscard]] const T* begin() const noexcept { return m_elements; }
    [[nodiscard]] const T* end() const noexcept { return m_elements + m_count; }

    /// Destroys the elements, frees the block and sets the growth step back to its default.
    void Clear() noexcept
    {
        // The array is empty before its elements go, for one whose destruction reaches back here.
        T* const elements = std::exchange(m_elements, nullptr);
        const int count = std::exchange(m_count, 0);
        const int capacity = std::exchange(m_capacity, 0);
        m_growthStep = kDefaultGrowthStep;
        std::destroy_n(elements, count);
        if (elements != nullptr)
            std::allocator<T>().deallocate(elements, static_cast<std::size_t>(capacity));
    }

    /// Takes one element out; the later ones move down by one place. The capacity stays.
    void RemoveAt(int index)
    {
        assert(index >= 0 && index < m_count);
        std::move(begin() + index + 1, end(), begin() + index);
        RemoveLast();
    }

    void RemoveLast()
    {
        assert(m_count > 0);
        --m_count;
        std::destroy_at(m_elements + m_count);
    }

    /// How many elements the first append makes room for; values below 1 count as 1. A caller that
    /// knows the count in advance sets it here.
    void SetGrowthStep(int elementCount) noexcept { m_growthStep = std::max(elementCount, 1); }

private:
    /// Gives an array that holds nothing a block for \a capacity elements.
    void Allocate(int capacity)
    {
        m_elements = std::allocator<T>().allocate(static_cast<std::size_t>(capacity));
        m_capacity = capacity;
    }

    [[nodiscard]] int GetNextCapacity() const
    {
        if (m_capacity == 0)
            return m_growthStep;
        if (m_capacity == INT_MAX)
            throw std::bad_alloc();
        const std::int64_t next = (std::int64_t{4} * m_capacity + 4) / 3;
        return static_cast<int>(std::min<std::int64_t>(next, INT_MAX));
    }

    template <typename U>
    void Append(U&& element)
    {
        if (m_count == m_capacity) {
            AppendToLargerBlock(std::forward<U>(element));
            return;
        }
        std::construct_at(m_elements + m_count, std::forward<U>(element));
        ++m_count;
    }

    /// The new element is made while the old block still stands, since it may come from there.
    template <typename U>
    void AppendToLargerBlock(U&& element)
    {
        CKvArray larger;
        larger.Allocate(GetNextCapacity());
        larger.m_growthStep = m_growthStep;
        if constexpr (std::is_nothrow_move_constructible_v<T> || !std::is_copy_constructible_v<T>) {
            std::construct_at(larger.m_elements + m_count, std::forward<U>(element));
            std::uninitialized_move_n(m_elements, m_count, larger.m_elements);
        } else {
            std::uninitialized_copy_n(m_elements, m_count, larger.m_elements);
            larger.m_count = m_count;  // a failure of the next line destroys the copies
            std::construct_at(larger.m_elements + m_count, std::forward<U>(element));
        }
        larger.m_count = m_count + 1;
        Swap(larger);
    }

    void Swap(CKvArray& other) noexcept
    {
        std::swap(m_elements, other.m_elements);
        std::swap(m_count, other.m_count);
        std::swap(m_capacity, other.m_capacity);
        std::swap(m_growthStep, other.m_growthStep);
    }

    // In the documented order.
    T* m_elements = nullptr;
    int m_count = 0;
    int m_capacity = 0;
    int m_growthStep = kDefaultGrowthStep;
};
