// The host's disk with one operation, or all from one on, failing the way the real ones fail. A
// sweep repeats a test with the 1st, 2nd, ... operation failing until a run has fewer operations
// than that:
//
//     int n = 0;
//     for (bool failed = true; failed;) {
//         CKvFaultyDisk disk(++n, CKvFaultyDisk::EFaults::Once);
//         ... the operations under test ...
//         failed = disk.HasFailed();
//     }

#pragma once

#include <cstdio>
#include <set>

#include "platform/KvPlatform.h"

/// In use from its constructor to its destructor, which brings the host's own disk back. At most
/// one lives at a time.
class CKvFaultyDisk
{
public:
    enum class EFaults
    {
        /// The n-th operation alone fails; a read or write moves the first half of its bytes.
        Once,
        /// The n-th operation and all after it fail, and move no byte.
        FromThenOn
    };

    /// Counts operations and fails none.
    CKvFaultyDisk() : CKvFaultyDisk(0, EFaults::Once) {}

    /// Makes the operation number \a failing fail, counted from 1; 0 for none.
    CKvFaultyDisk(int failing, EFaults faults);
    CKvFaultyDisk(const CKvFaultyDisk&) = delete;
    CKvFaultyDisk& operator=(const CKvFaultyDisk&) = delete;
    ~CKvFaultyDisk();

    /// How many operations ran, failed ones included. What cannot report a failure is none.
    int GetCount() const { return m_count; }

    /// Whether any operation was made to fail.
    bool HasFailed() const { return m_hasFailed; }

private:
    friend struct CKvFaultyDiskOperations;

    /// Counts one more operation; true when it must fail.
    bool NextFails();

    /// Counts one more read or write; gives how many of its bytes move.
    std::size_t NextMoves(std::size_t sizeBytes);

    int m_failing;
    EFaults m_faults;
    int m_count = 0;
    bool m_hasFailed = false;

    /// Streams that a read or write failed on: closing them tells, as it does on the real disk.
    std::set<std::FILE*> m_damaged;
};
