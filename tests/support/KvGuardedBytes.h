// Memory that ends where unreadable memory begins: whoever reads one byte too many ends the test at
// that very read, in code without sanitizer too.

#pragma once

#include <cstddef>
#include <string_view>

class CKvGuardedBytes
{
public:
    /// Units: \a capacity in bytes.
    explicit CKvGuardedBytes(std::size_t capacity);
    CKvGuardedBytes(const CKvGuardedBytes&) = delete;
    CKvGuardedBytes& operator=(const CKvGuardedBytes&) = delete;
    ~CKvGuardedBytes();

    /// Copies at most as many bytes as the capacity so that the last one is the last readable byte.
    ///
    /// Ownership: the copy is this object's and valid until the next Place().
    char* Place(std::string_view bytes);

private:
    char* m_begin = nullptr;
    std::size_t m_readableSize = 0;
    std::size_t m_pageSize = 0;
};
