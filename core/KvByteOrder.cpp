#include "core/KvByteOrder.h"

#include <cstddef>
#include <cstring>
#include <type_traits>

namespace {

/// Works on the bytes in memory: a float whose reversed bits are a signalling NaN must never pass
/// through a floating-point register, which may change it.
template <typename T>
void ReverseBytes(T& value)
{
    using Long = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;
    using Word = std::conditional_t<sizeof(T) == 2, std::uint16_t, Long>;
    static_assert(sizeof(Word) == sizeof(T));
    Word word = 0;
    std::memcpy(&word, &value, sizeof word);
    word = KvReverseBytes(word);
    std::memcpy(&value, &word, sizeof word);
}

template <typename T>
void ReverseEach(T* values, unsigned int byteSize)
{
    const std::size_t count = byteSize / sizeof(T);
    for (std::size_t i = 0; i < count; ++i)
        ReverseBytes(values[i]);
}

}  // namespace

void KvSwapEndian(unsigned short& value)
{
    ReverseBytes(value);
}

void KvSwapEndian(short& value)
{
    ReverseBytes(value);
}

void KvSwapEndian(unsigned int& value)
{
    ReverseBytes(value);
}

void KvSwapEndian(int& value)
{
    ReverseBytes(value);
}

void KvSwapEndian(unsigned long& value)
{
    ReverseBytes(value);
}

void KvSwapEndian(long& value)
{
    ReverseBytes(value);
}

void KvSwapEndian(unsigned long long& value)
{
    ReverseBytes(value);
}

void KvSwapEndian(long long& value)
{
    ReverseBytes(value);
}

void KvSwapEndian(float& value)
{
    ReverseBytes(value);
}

void KvSwapEndian(unsigned short* values, unsigned int byteSize)
{
    ReverseEach(values, byteSize);
}

void KvSwapEndian(short* values, unsigned int byteSize)
{
    ReverseEach(values, byteSize);
}

void KvSwapEndian(unsigned int* values, unsigned int byteSize)
{
    ReverseEach(values, byteSize);
}

void KvSwapEndian(int* values, unsigned int byteSize)
{
    ReverseEach(values, byteSize);
}

void KvSwapEndian(float* values, unsigned int byteSize)
{
    ReverseEach(values, byteSize);
}
