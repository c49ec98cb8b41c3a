// Reading arrays of pointers by an index that comes from a caller.

#pragma once

#include <cassert>

#include "core/KvArray.h"

/// The pointer at \a index. The index must be in range: debug builds assert it, release builds give
/// null for another.
template <typename T>
[[nodiscard]] T* KvEntryAt(const CKvArray<T*>& array, int index)
{
    const bool isInRange = index >= 0 && index < array.GetCount();
    assert(isInRange);
    return isInRange ? array[index] : nullptr;
}
