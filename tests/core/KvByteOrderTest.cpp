#include "core/KvByteOrder.h"

#include <gtest/gtest.h>

#include <array>

namespace {

TEST(KvByteOrderTest, SwapsTheWholeElementsOfAnArray)
{
    // The size is in bytes: of 10 bytes, two are behind the last whole element of four.
    std::array<unsigned int, 3> elements = {0x11223344, 0x55667788, 0x99AABBCC};
    KvSwapEndian(elements.data(), 10);
    EXPECT_EQ(elements, (std::array<unsigned int, 3>{0x44332211, 0x88776655, 0x99AABBCC}));
}

}  // namespace
