// Reading arrays of pointers by an index that comes from a caller.

#pragma once

#include <cassert>
#include <memory>
#include <type_traits>

#include "core/KvArray.h"

/// The pointer at \a index; where the array owns by std::unique_ptr, what that holds. The index
/// must be in range: debug builds assert it, release builds give null for another.
template <typename TPointer>
[[nodiscard]] auto KvEntryAt(const CKvArray<TPointer>& array, int index) ->
    typename std::pointer_traits<TPointer>::element_type*
{
    const bool isInRange = index >= 0 && index < array.GetCount();
    assert(isInRange);
    if (!isInRange)
        return nullptr;
    if constexpr (std::is_pointer_v<TPointer>)
        return array[index];
    else
        return array[index].get();
}
