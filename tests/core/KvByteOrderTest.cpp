#include "core/KvByteOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <numeric>

namespace {

/// An object whose bytes are 01 02 03 ... in memory.
template <typename T>
T CountingBytes()
{
    std::array<unsigned char, sizeof(T)> bytes = {};
    std::iota(bytes.begin(), bytes.end(), static_cast<unsigned char>(1));
    T value = {};
    std::memcpy(&value, bytes.data(), sizeof value);
    return value;
}

template <typename T>
class KvSwapEndianTest : public testing::Test
{
};

using SwappedTypes = testing::Types<unsigned short, short, unsigned int, int, unsigned long, long,
                                    unsigned long long, long long, float>;
TYPED_TEST_SUITE(KvSwapEndianTest, SwappedTypes);

TYPED_TEST(KvSwapEndianTest, ReversesAllBytesOfTheTypesOwnSize)
{
    TypeParam value = CountingBytes<TypeParam>();
    KvSwapEndian(value);
    std::array<unsigned char, sizeof(TypeParam)> bytes = {};
    std::memcpy(bytes.data(), &value, sizeof value);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        EXPECT_EQ(bytes[i], bytes.size() - i);
}

/// Swaps 10 bytes in place and compares; the element is \a T.
template <typename T>
void ExpectSwapped(const std::array<unsigned char, 10>& expected)
{
    std::array<unsigned char, 12> bytes = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
    std::array<T, 12 / sizeof(T)> elements = {};
    std::memcpy(elements.data(), bytes.data(), bytes.size());
    KvSwapEndian(elements.data(), 10);
    std::memcpy(bytes.data(), elements.data(), bytes.size());
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), bytes.begin()))
        << "element of " << sizeof(T) << " bytes";
}

TEST(KvSwapEndianArrayTest, SizeCountsBytesAndAnIncompleteElementStays)
{
    constexpr std::array<unsigned char, 10> byTwos = {1, 0, 3, 2, 5, 4, 7, 6, 9, 8};
    constexpr std::array<unsigned char, 10> byFours = {3, 2, 1, 0, 7, 6, 5, 4, 8, 9};
    ExpectSwapped<unsigned short>(byTwos);
    ExpectSwapped<short>(byTwos);
    ExpectSwapped<unsigned int>(byFours);
    ExpectSwapped<int>(byFours);
    ExpectSwapped<float>(byFours);
}

TEST(KvAlignValueTest, RoundsUpOnlyWhatIsNoMultiple)
{
    EXPECT_EQ(KvAlignValue(0, 2048), 0U);
    EXPECT_EQ(KvAlignValue(16, 16), 16U);
    EXPECT_EQ(KvAlignValue(17, 16), 32U);
    EXPECT_EQ(KvAlignValue(31, 1), 31U);
}

}  // namespace
