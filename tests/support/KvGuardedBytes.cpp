#include "tests/support/KvGuardedBytes.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

CKvGuardedBytes::CKvGuardedBytes(std::size_t capacity)
    : m_pageSize(static_cast<std::size_t>(sysconf(_SC_PAGESIZE)))
{
    m_readableSize = (capacity / m_pageSize + 1) * m_pageSize;
    void* begin = mmap(nullptr, m_readableSize + m_pageSize, PROT_READ | PROT_WRITE,
                       MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (begin == MAP_FAILED)
        std::abort();
    m_begin = static_cast<char*>(begin);
    if (mprotect(m_begin + m_readableSize, m_pageSize, PROT_NONE) != 0)
        std::abort();
}

CKvGuardedBytes::~CKvGuardedBytes()
{
    munmap(m_begin, m_readableSize + m_pageSize);
}

char* CKvGuardedBytes::Place(std::string_view bytes)
{
    if (bytes.size() > m_readableSize)
        std::abort();
    char* copy = m_begin + m_readableSize - bytes.size();
    if (!bytes.empty())
        std::memcpy(copy, bytes.data(), bytes.size());
    return copy;
}
