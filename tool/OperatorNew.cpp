// The program's throwing allocation functions, where it is linked with mimalloc: that library's own
// end the program when memory runs out, and C++ asks for std::bad_alloc. All others are mimalloc's.

#include <cstdlib>
#include <new>

void* operator new(std::size_t size)
{
    if (void* block = std::malloc(size > 0 ? size : 1))
        return block;
    throw std::bad_alloc();
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}
