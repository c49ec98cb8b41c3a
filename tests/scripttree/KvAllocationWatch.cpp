#include "tests/scripttree/KvAllocationWatch.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <new>

namespace {

CKvAllocationWatch* s_watch = nullptr;

/// The blocks that were allocated under the watch and are still there, the last one last. A fixed
/// table, since keeping it must not allocate.
std::array<void*, 10000> s_blocks;
std::size_t s_blockCount = 0;

void Remember(void* block)
{
    if (s_blockCount == s_blocks.size())
        std::abort();
    s_blocks[s_blockCount++] = block;
}

/// Most blocks go soon after they came.
void Forget(const void* block)
{
    for (std::size_t i = s_blockCount; i-- > 0;) {
        if (s_blocks[i] == block) {
            s_blocks[i] = s_blocks[--s_blockCount];
            return;
        }
    }
}

}  // namespace

struct CKvAllocationHooks
{
    static void* Allocate(std::size_t size)
    {
        if (s_watch != nullptr && ++s_watch->m_count == s_watch->m_failing)
            throw std::bad_alloc();
        void* block = std::malloc(std::max<std::size_t>(size, 1));
        if (block == nullptr)
            throw std::bad_alloc();
        if (s_watch != nullptr) {
            s_watch->m_totalBytes += size;
            Remember(block);
        }
        return block;
    }

    static void Free(void* block)
    {
        if (s_watch != nullptr)
            Forget(block);
        std::free(block);
    }
};

void* operator new(std::size_t size)
{
    return CKvAllocationHooks::Allocate(size);
}

void operator delete(void* block) noexcept
{
    CKvAllocationHooks::Free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    CKvAllocationHooks::Free(block);
}

CKvAllocationWatch::CKvAllocationWatch(int failing) : m_failing(failing)
{
    s_watch = this;
}

CKvAllocationWatch::~CKvAllocationWatch()
{
    Stop();
}

int CKvAllocationWatch::Stop()
{
    s_watch = nullptr;
    const auto left = static_cast<int>(s_blockCount);
    while (s_blockCount > 0)
        std::free(s_blocks[--s_blockCount]);
    return left;
}
