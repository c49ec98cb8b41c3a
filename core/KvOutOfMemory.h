// Turns the one exception of this library's building blocks into the result that callers expect.

#pragma once

#include <new>

/// Counts that memory has run out in this thread, for a failure result that does not tell why.
void KvNoteOutOfMemory();

/// How often that was. Who must not take it for another failure compares before and after.
int KvGetOutOfMemoryCount();

/// Calls \a operation and gives its result; false, and counted, when memory ran out on the way.
/// What the operation had begun must be undone by its own owners.
template <class TOperation>
[[nodiscard]] bool KvFalseWhenOutOfMemory(TOperation operation)
{
    try {
        return operation();
    } catch (const std::bad_alloc&) {
        KvNoteOutOfMemory();
        return false;
    }
}
