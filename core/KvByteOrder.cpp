#include "core/KvByteOrder.h"

#include <array>
#include <cstddef>
#include <cstring>

namespace {

/// Works on the bytes in memory: a float whose reversed bits are a signalling NaN must never pass
/// through a floating-point register, which may change it.
template <typename T>
void ReverseBytes(T& value)
{
    std::array<unsigned char, sizeof(T)> bytes = {};
    std::array<unsigned char, sizeof(T)> reversed = {};
    std::memcpy(bytes.data(), &value, sizeof(T));
    for (std::size_t i = 0; i < sizeof(T); ++i)
        reversed[i] = bytes[sizeof(T) - 1 - i];
    std::memcpy(&value, reversed.data(), sizeof(T));
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
