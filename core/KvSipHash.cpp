#include "core/KvSipHash.h"

#include <bit>
#include <cstddef>
#include <span>

namespace {

class CSipState
{
public:
    CSipState(std::uint64_t key0, std::uint64_t key1)
        : m_v0(key0 ^ 0x736f6d6570736575u),
          m_v1(key1 ^ 0x646f72616e646f6du),
          m_v2(key0 ^ 0x6c7967656e657261u),
          m_v3(key1 ^ 0x7465646279746573u)
    {
    }

    void Absorb(std::uint64_t word)
    {
        m_v3 ^= word;
        Round();
        Round();
        m_v0 ^= word;
    }

    std::uint64_t Finish()
    {
        m_v2 ^= 0xff;
        for (int i = 0; i < 4; ++i)
            Round();
        return m_v0 ^ m_v1 ^ m_v2 ^ m_v3;
    }

private:
    void Round()
    {
        m_v0 += m_v1;
        m_v2 += m_v3;
        m_v1 = std::rotl(m_v1, 13) ^ m_v0;
        m_v3 = std::rotl(m_v3, 16) ^ m_v2;
        m_v0 = std::rotl(m_v0, 32) + m_v3;
        m_v2 += m_v1;
        m_v1 = std::rotl(m_v1, 17) ^ m_v2;
        m_v3 = std::rotl(m_v3, 21) ^ m_v0;
        m_v2 = std::rotl(m_v2, 32);
    }

    std::uint64_t m_v0;
    std::uint64_t m_v1;
    std::uint64_t m_v2;
    std::uint64_t m_v3;
};

/// Bytes as a little-endian number. A compiler makes one load of eight.
template <std::size_t Size>
std::uint64_t ReadWord(std::span<const char, Size> bytes)
{
    std::uint64_t word = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        word |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
    return word;
}

}  // namespace

std::uint64_t KvSipHash(std::uint64_t key0, std::uint64_t key1, std::string_view text)
{
    CSipState state(key0, key1);
    std::span<const char> rest = text;
    for (; rest.size() >= 8; rest = rest.subspan(8))
        state.Absorb(ReadWord(rest.first<8>()));
    state.Absorb(ReadWord(rest) | std::uint64_t{text.size()} << 56);
    return state.Finish();
}
