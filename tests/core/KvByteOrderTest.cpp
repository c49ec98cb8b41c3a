#include "core/KvByteOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <numeric>

namespace {

template <typename T>
void ExpectReversesItsOwnSize()
{
    std::array<unsigned char, sizeof(T)> bytes = {};
    std::iota(bytes.begin(), bytes.end(), static_cast<unsigned char>(1));
    T value = std::bit_cast<T>(bytes);
    KvSwapEndian(value);
    std::reverse(bytes.begin(), bytes.end());
    EXPECT_EQ(std::bit_cast<decltype(bytes)>(value), bytes);
}

TEST(KvByteOrderTest, SwapsValuesOfEachSizeAndTheWholeElementsOfAnArray)
{
    ExpectReversesItsOwnSize<short>();
    ExpectReversesItsOwnSize<unsigned int>();
    ExpectReversesItsOwnSize<float>();
    ExpectReversesItsOwnSize<long>();
    ExpectReversesItsOwnSize<unsigned long long>();

    // The size is in bytes: of 10 bytes, two are behind the last whole element of four.
    std::array<unsigned int, 3> elements = {0x11223344, 0x55667788, 0x99AABBCC};
    KvSwapEndian(elements.data(), 10);
    EXPECT_EQ(elements, (std::array<unsigned int, 3>{0x44332211, 0x88776655, 0x99AABBCC}));
}

}  // namespace
