// Turns the one exception of this library's building blocks into the result that callers expect.

#pragma once

#include <new>

/// Calls \a operation and gives its result; false when memory ran out on the way. What the
/// operation had begun must be undone by its own owners.
template <class TOperation>
[[nodiscard]] bool KvFalseWhenOutOfMemory(TOperation operation)
{
    try {
        return operation();
    } catch (const std::bad_alloc&) {
        return false;
    }
}
