#include "tests/scripttree/KvAllocationWatch.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <new>

#include "core/KvId.h"

namespace {

CKvAllocationWatch* s_watch = nullptr;

/// The blocks that were allocated under the watch and are still there. A fixed table, since keeping
/// it must not allocate.
std::array<void*, 10000> s_blocks;
std::size_t s_blockCount = 0;

}  // namespace

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    if (s_watch != nullptr && ++s_watch->count == s_watch->failing)
        return nullptr;
    void* block = std::malloc(std::max<std::size_t>(size, 1));
    if (s_watch != nullptr && block != nullptr) {
        s_watch->totalBytes += size;
        s_blocks.at(s_blockCount++) = block;
    }
    return block;
}

void* operator new(std::size_t size)
{
    void* block = operator new(size, std::nothrow);
    if (block == nullptr)
        throw std::bad_alloc();
    return block;
}

void operator delete(void* block) noexcept
{
    void** const end = s_blocks.data() + s_blockCount;
    void** const found = std::find(s_blocks.data(), end, block);
    if (found != end)
        *found = s_blocks[--s_blockCount];
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    operator delete(block);
}

CKvAllocationWatch::CKvAllocationWatch(int failingNumber) : failing(failingNumber)
{
    KVID::GetSingleton();  // made here if nobody has yet: it stays for good
    s_watch = this;
}

int CKvAllocationWatch::Stop()
{
    s_watch = nullptr;
    const auto left = static_cast<int>(s_blockCount);
    while (s_blockCount > 0)
        std::free(s_blocks[--s_blockCount]);
    return left;
}
