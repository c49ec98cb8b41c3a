// Memory that ends where unreadable memory begins: whoever reads one byte too many ends the test at
// that very read, in code without sanitizer too.

#pragma once

#include <sys/mman.h>

#include <cstdlib>
#include <string_view>

class CKvGuardedBytes
{
public:
    /// Units: \a capacity in bytes.
    explicit CKvGuardedBytes(std::size_t capacity)
        : m_readableSize((capacity / kPageSize + 1) * kPageSize)
    {
        m_begin = static_cast<char*>(mmap(nullptr, m_readableSize + kPageSize, PROT_NONE,
                                          MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
        if (mprotect(m_begin, m_readableSize, PROT_READ | PROT_WRITE) != 0)
            std::abort();
    }

    CKvGuardedBytes(const CKvGuardedBytes&) = delete;
    CKvGuardedBytes& operator=(const CKvGuardedBytes&) = delete;
    ~CKvGuardedBytes() { munmap(m_begin, m_readableSize + kPageSize); }

    /// Copies at most as many bytes as the capacity so that the last one is the last readable byte.
    ///
    /// Ownership: the copy is this object's and valid until the next Place().
    char* Place(std::string_view bytes)
    {
        if (bytes.size() > m_readableSize)
            std::abort();
        char* copy = m_begin + m_readableSize - bytes.size();
        bytes.copy(copy, bytes.size());
        return copy;
    }

private:
    static constexpr std::size_t kPageSize = 65536;  // a multiple of any system's

    std::size_t m_readableSize;
    char* m_begin;
};
