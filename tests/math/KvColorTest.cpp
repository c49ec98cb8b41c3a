#include "math/KvColor.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>

namespace {

static_assert(CKvRGB<unsigned char>(255, 255, 255).GetLuminance() == 255);
static_assert(CKvRGB<unsigned char>(100, 150, 200).GetLuminance() == 140);
static_assert(CKvRGB<unsigned short>(65535, 65535, 65535).GetLuminance() == 65535);
static_assert(CKvRGBA<float>(1, 0.5F, 2, 9).GetHighestChannelValue() == 2);
static_assert(CKvRGBA<float>(1, 2, 3, 4).GetRGB() == CKvRGB<float>(1, 2, 3));
// Wraps around: 200 * 2 + 3 * 5 + 0 = 415, and 65535 * 65535, which overflows an int, is 1.
static_assert(CKvRGB<unsigned char>(200, 3, 9).DotProduct(2, 5, 0) == 415 % 256);
static_assert(CKvBGR<unsigned short>(65535, 0, 0).DotProduct({65535, 0, 0}) == 1);
static_assert(CKvRGB<unsigned char>(250, 1, 7) + 10 == CKvRGB<unsigned char>(4, 11, 17));
static_assert(CKvRGB<unsigned char>(250, 1, 7) / CKvRGB<unsigned char>(50, 0, 2) ==
              CKvRGB<unsigned char>(5, 0, 3));

// Names tell the order in memory.
using Byte = unsigned char;
static_assert(offsetof(CKvRGB<Byte>, r) == 0 && offsetof(CKvRGB<Byte>, b) == 2);
static_assert(offsetof(CKvBGR<Byte>, b) == 0 && offsetof(CKvBGR<Byte>, r) == 2);
static_assert(offsetof(CKvRGBA<Byte>, r) == 0 && offsetof(CKvRGBA<Byte>, a) == 3);
static_assert(offsetof(CKvARGB<Byte>, a) == 0 && offsetof(CKvARGB<Byte>, r) == 1);

template <typename Color>
class KvColorTest : public ::testing::Test
{
};

template <template <typename> typename... Templates>
using TAllColors = ::testing::Types<Templates<unsigned char>..., Templates<unsigned short>...,
                                    Templates<float>...>;
using CAllColors = TAllColors<CKvRGB, CKvRGBA, CKvBGR, CKvARGB>;
TYPED_TEST_SUITE(KvColorTest, CAllColors);

TYPED_TEST(KvColorTest, IndexesByMeaningAndClamps)
{
    using Channel = std::remove_reference_t<decltype(TypeParam()[0])>;
    constexpr int count = TypeParam::e_max;
    static_assert(sizeof(TypeParam) == count * sizeof(Channel) && std::is_trivial_v<TypeParam>);

    TypeParam color;
    for (int i = 0; i < count; ++i)
        color[i] = static_cast<Channel>(10 * (i + 1));
    EXPECT_TRUE(color.r == 10 && color.g == 20 && color.b == 30);
    for (const int beyond : {count, 99, -1})
        EXPECT_EQ(&color[beyond], &color[count - 1]);
    EXPECT_EQ(color.GetLuminance(), static_cast<Channel>(0.299F * 10 + 0.587F * 20 + 0.114F * 30));

    TypeParam gray = color;
    gray.SetGrayScale();
    EXPECT_TRUE(gray.r == color.GetLuminance() && gray.g == gray.r && gray.b == gray.r);
    color.ClampRGB(15, 25);
    EXPECT_TRUE(color.r == 15 && color.g == 20 && color.b == 25);
    if constexpr (count == 4) {
        EXPECT_TRUE(color.a == 40 && gray.a == 40);
    }
}

}  // namespace
