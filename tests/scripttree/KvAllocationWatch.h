// Replaces this test program's allocation functions by ones that a test can watch and make fail.

#pragma once

#include <cstddef>

/// Counts allocations from its constructor to Stop(). A sweep over the failing allocation ends with
/// the first run in which none had to fail. At most one lives at a time; for one thread.
struct CKvAllocationWatch
{
    /// Makes the allocation number \a failing, counted from 1, throw std::bad_alloc; 0 for none.
    explicit CKvAllocationWatch(int failing = 0);
    CKvAllocationWatch(const CKvAllocationWatch&) = delete;
    ~CKvAllocationWatch() { Stop(); }

    /// Ends the watch and frees what was allocated under it and is still there, which nobody may
    /// use any more. Gives the number of these blocks.
    int Stop();

    bool HasFailed() const { return failing > 0 && count >= failing; }

    const int failing;
    int count = 0;

    /// All that was asked for, freed or not.
    std::size_t totalBytes = 0;
};
