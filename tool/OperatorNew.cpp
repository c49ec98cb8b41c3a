// The program's throwing allocation functions, where it is linked with mimalloc: that library's own
// end the program when memory runs out, and C++ asks for std::bad_alloc. Those that do not throw,
// and those that free, are mimalloc's.

#include <cstdlib>
#include <new>

namespace {

/// Tries again as long as there is a handler that may find memory.
template <class TAllocate>
void* AllocateOrThrow(TAllocate allocate)
{
    for (;;) {
        if (void* block = allocate())
            return block;
        const std::new_handler handler = std::get_new_handler();
        if (handler == nullptr)
            throw std::bad_alloc();
        handler();
    }
}

}  // namespace

void* operator new(std::size_t size)
{
    return AllocateOrThrow([size] { return std::malloc(size > 0 ? size : 1); });
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

void* operator new(std::size_t size, std::align_val_t alignment)
{
    const auto unit = static_cast<std::size_t>(alignment);
    const std::size_t rounded = (size + unit - 1) / unit * unit;
    if (rounded < size)
        throw std::bad_alloc();
    return AllocateOrThrow([&] { return std::aligned_alloc(unit, rounded > 0 ? rounded : unit); });
}

void* operator new[](std::size_t size, std::align_val_t alignment)
{
    return operator new(size, alignment);
}
