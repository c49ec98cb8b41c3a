#include "reflection/KvBasicVariant.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using V = CKvBasicVariant;

/// Sets a value of T, whose bytes all differ from their neighbours, and follows it out again.
template <typename T>
void ExpectKind(int number, const char* name, int size, const char* scalar, int components)
{
    SCOPED_TRACE(name);
    const auto type = static_cast<V::EType>(number);
    EXPECT_EQ(V::GetETypeEnumFromName(name), type);
    EXPECT_STREQ(V::GetETypeName(type), name);
    EXPECT_EQ(V::GetETypeByteSize(type), size);
    EXPECT_STREQ(V::GetETypeName(V::GetETypeComponentScalarType(type)), scalar);
    EXPECT_EQ(V::GetETypeNumComponents(type), components);

    ASSERT_EQ(sizeof(T), static_cast<std::size_t>(size));
    unsigned char bytes[sizeof(T)] = {};
    for (int i = 0; i < size; ++i)
        bytes[i] = static_cast<unsigned char>(size == components ? 1 - i % 2 : i + 1);
    T value;
    std::memcpy(&value, bytes, sizeof bytes);

    V variant;
    variant.SetValue(value);
    EXPECT_EQ(variant.GetEType(), type);
    unsigned char out[V::max_value_byte_size + 1];
    std::memset(out, 0xEE, sizeof out);
    variant.MemoryCopyTo(out);
    EXPECT_EQ(std::memcmp(out, bytes, sizeof bytes), 0);
    EXPECT_EQ(out[size], 0xEE);
}

TEST(KvBasicVariantTest, EveryKindGoesInAndComesOutAndNothingElseIsOne)
{
    ExpectKind<V::BasicMat4x4>(0, "matrix4x4", 64, "float", 16);
    ExpectKind<V::BasicMat3x3>(1, "matrix3x3", 36, "float", 9);
    ExpectKind<V::BasicMat2x2>(2, "matrix2x2", 16, "float", 4);
    ExpectKind<V::BasicFloat4>(3, "vector4", 16, "float", 4);
    ExpectKind<V::BasicInt4>(4, "ivector4", 16, "int", 4);
    ExpectKind<V::BasicUint4>(5, "uvector4", 16, "uint", 4);
    ExpectKind<V::BasicBool4>(6, "bvector4", 4, "bool", 4);
    ExpectKind<V::BasicRGBAf>(7, "rgbaf", 16, "float", 4);
    ExpectKind<V::BasicFloat3>(8, "vector3", 12, "float", 3);
    ExpectKind<V::BasicEulerAngles>(9, "eulerangles", 12, "float", 3);
    ExpectKind<V::BasicInt3>(10, "ivector3", 12, "int", 3);
    ExpectKind<V::BasicUint3>(11, "uvector3", 12, "uint", 3);
    ExpectKind<V::BasicBool3>(12, "bvector3", 3, "bool", 3);
    ExpectKind<V::BasicRGBf>(13, "rgbf", 12, "float", 3);
    ExpectKind<V::BasicFloat2>(14, "vector2", 8, "float", 2);
    ExpectKind<V::BasicInt2>(15, "ivector2", 8, "int", 2);
    ExpectKind<V::BasicUint2>(16, "uvector2", 8, "uint", 2);
    ExpectKind<V::BasicBool2>(17, "bvector2", 2, "bool", 2);
    ExpectKind<float>(18, "float", 4, "float", 1);
    ExpectKind<int>(19, "int", 4, "int", 1);
    ExpectKind<unsigned int>(20, "uint", 4, "uint", 1);
    ExpectKind<bool>(21, "bool", 1, "bool", 1);
    EXPECT_EQ(V::GetETypeEnumFromName("Vector3"), V::TYPE_INVALID);
    for (const V::EType type : {V::TYPE_INVALID, static_cast<V::EType>(V::kTypeCount)}) {
        EXPECT_FALSE(V::IsValidEType(type));
        EXPECT_DEBUG_DEATH(EXPECT_EQ(V::GetETypeNumComponents(type), 0), "");
    }
}

}  // namespace
