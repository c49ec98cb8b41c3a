#include "core/KvCrc64.h"

#include <array>
#include <cstddef>

namespace {

constexpr std::uint64_t kReflectedPolynomial = 0x95AC9329AC4BC9B5u;

using Table = std::array<std::uint64_t, 256>;

constexpr Table MakeTable()
{
    Table table = {};
    for (std::size_t i = 0; i < table.size(); ++i) {
        std::uint64_t value = i;
        for (int bit = 0; bit < 8; ++bit)
            value = (value >> 1) ^ ((value & 1u) != 0 ? kReflectedPolynomial : 0u);
        table[i] = value;
    }
    return table;
}

/// What each byte enters the CRC as when ASCII case is folded.
constexpr std::array<unsigned char, 256> MakeFolding()
{
    std::array<unsigned char, 256> folding = {};
    for (std::size_t i = 0; i < folding.size(); ++i)
        folding[i] = static_cast<unsigned char>(i >= 'A' && i <= 'Z' ? i + 0x20 : i);
    return folding;
}

constexpr Table kTable = MakeTable();
constexpr std::array<unsigned char, 256> kFolding = MakeFolding();

}  // namespace

std::uint64_t CreateCrc64(const void* data, unsigned int size)
{
    const auto* bytes = static_cast<const unsigned char*>(data);
    std::uint64_t crc = kKvCrc64Initial;
    for (unsigned int i = 0; i < size; ++i)
        crc = kTable[(crc ^ bytes[i]) & 0xFFu] ^ (crc >> 8);
    return crc;
}

std::uint64_t CreateCrc64_ToLower(const void* data, unsigned int size, std::uint64_t seed)
{
    const auto* bytes = static_cast<const unsigned char*>(data);
    std::uint64_t crc = seed;
    for (unsigned int i = 0; i < size; ++i)
        crc = kTable[(crc ^ kFolding[bytes[i]]) & 0xFFu] ^ (crc >> 8);
    return crc;
}
