// Every kind of field by the same test, in the object and through accessor functions.

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <type_traits>

#include "reflection/KvReflectionField.h"
#include "reflection/KvReflectionInformationSnapShot.h"

namespace {

using I = CKvReflectionInformation;

// How a snapshot stores a kind: as one of the variants, or
constexpr int kNotAtAll = -2, kAsTextOrPointer = -1;

template <int kType, auto kSet, auto kGet, int kStoredAs>
struct SKind
{
    static constexpr auto type = static_cast<I::EType>(kType);
    static constexpr auto set = kSet;
    static constexpr auto get = kGet;
    static constexpr int storedAs = kStoredAs;
    using Value = std::remove_cvref_t<std::invoke_result_t<decltype(kGet), I, void*>>;
};

using Kinds =
    ::testing::Types<SKind<2, &I::SetValueBool, &I::GetValueBool, 21>,
                     SKind<3, &I::SetValueInt, &I::GetValueInt, 19>,
                     SKind<4, &I::SetValueUInt, &I::GetValueUInt, kNotAtAll>,
                     SKind<5, &I::SetValueInt64, &I::GetValueInt64, kNotAtAll>,
                     SKind<6, &I::SetValueUInt64, &I::GetValueUInt64, kNotAtAll>,
                     SKind<7, &I::SetValueFloat, &I::GetValueFloat, 18>,
                     SKind<8, &I::SetValueUUID, &I::GetValueUUID, kNotAtAll>,
                     SKind<9, &I::SetValueColor, &I::GetValueColor, 7>,
                     SKind<10, &I::SetValueVector2, &I::GetValueVector2, 14>,
                     SKind<11, &I::SetValueVector3, &I::GetValueVector3, 8>,
                     SKind<12, &I::SetValueVector4, &I::GetValueVector4, 3>,
                     SKind<13, &I::SetValueMatrix22, &I::GetValueMatrix22, 2>,
                     SKind<14, &I::SetValueMatrix33, &I::GetValueMatrix33, 1>,
                     SKind<15, &I::SetValueMatrix44, &I::GetValueMatrix44, 0>,
                     SKind<16, &I::SetValueEulerAngles, &I::GetValueEulerAngles, 9>,
                     SKind<17, &I::SetValueEnum, &I::GetValueEnum, 19>,
                     SKind<18, &I::SetValueString, &I::GetValueString, kNotAtAll>,
                     SKind<19, &I::SetValueString, &I::GetValueString, kAsTextOrPointer>,
                     SKind<20, &I::SetValueWString, &I::GetValueWString, kNotAtAll>,
                     SKind<21, &I::SetValueDataSetEnum, &I::GetValueDataSetEnum, kNotAtAll>,
                     SKind<23, &I::SetValueObject, &I::GetValueObject, kNotAtAll>,
                     SKind<24, &I::SetValueResourceArray, &I::GetValueResourceArray, kNotAtAll>,
                     SKind<26, &I::SetValueResource, &I::GetValueResource, kAsTextOrPointer>>;

/// The first or the second value of a type, which differ in every byte.
template <typename T>
T Example(bool second)
{
    static unsigned char s_targets[2];
    if constexpr (std::is_pointer_v<T>) {
        return static_cast<T>(static_cast<void*>(&s_targets[second ? 1 : 0]));
    } else if constexpr (std::is_same_v<T, CKvArray<CKvResource*>>) {
        T list;
        list.Add(Example<CKvResource*>(second));
        return list;
    } else if constexpr (std::is_constructible_v<T, const wchar_t*> && !std::is_same_v<T, bool>) {
        return second ? L"second text" : L"first";
    } else if constexpr (!std::is_trivially_copyable_v<T>) {
        return second ? "second text" : "first";
    } else {
        std::array<unsigned char, sizeof(T)> bytes;
        bytes.fill(std::is_same_v<T, bool> ? second : second ? 0x42 : 0x11);
        return std::bit_cast<T>(bytes);
    }
}

bool operator==(const CKvArray<CKvResource*>& a, const CKvArray<CKvResource*>& b)
{
    return a.GetCount() == 1 && b.GetCount() == 1 && a[0] == b[0];
}

/// An object as game classes are; its accessors keep the value in another place than the field.
template <typename TKind>
class KvReflectionKindsTest : public ::testing::Test
{
protected:
    using T = typename TKind::Value;

    struct SObject
    {
        virtual ~SObject() = default;

        T field = Example<T>(false);
        T hidden = Example<T>(false);
    };

    static void Set(void* object, const void* value)
    {
        if constexpr (std::is_same_v<T, CKvResource*>)
            static_cast<SObject*>(object)->hidden = static_cast<T>(const_cast<void*>(value));
        else
            static_cast<SObject*>(object)->hidden = *static_cast<const T*>(value);
    }
    static const void* Get(const void* object)
    {
        return &static_cast<const SObject*>(object)->hidden;
    }

    void ExpectAccessAndBackUp(I information, const T& place)
    {
        (information.*TKind::set)(&m_object, Example<T>(true));
        EXPECT_TRUE(place == Example<T>(true));
        EXPECT_TRUE((information.*TKind::get)(&m_object) == Example<T>(true));
        EXPECT_EQ(information.IsNull(), TKind::type < I::TYPE_OBJECT);
        if constexpr (std::is_pointer_v<T>) {
            (information.*TKind::set)(&m_object, nullptr);
            EXPECT_TRUE(place == nullptr && information.IsNull());
            (information.*TKind::set)(&m_object, Example<T>(true));
        }
        CKvReflectionInformationSnapShot snapshot(information, &m_object);
        (information.*TKind::set)(&m_object, Example<T>(false));
        if constexpr (TKind::storedAs >= 0) {
            EXPECT_EQ(snapshot.GetValue().GetEType(), TKind::storedAs);
        }
        snapshot.BackUp();
        EXPECT_TRUE(place == Example<T>(TKind::storedAs != kNotAtAll));
        snapshot.BackUp();
        EXPECT_TRUE(place == Example<T>(false));
    }

    SObject m_object;
};

TYPED_TEST_SUITE(KvReflectionKindsTest, Kinds);

TYPED_TEST(KvReflectionKindsTest, IsAccessedSavedAndRestoredInTheObjectAndThroughAccessors)
{
    auto& object = this->m_object;
    const I described = KvDescribeField("field", &object, object.field);
    const int offset = described.GetValueOffset();
    this->ExpectAccessAndBackUp(I(CKvIdentifier(), TypeParam::type, offset), object.field);
    const I accessed(CKvIdentifier(), TypeParam::type, offset, nullptr, nullptr, nullptr,
                     &TestFixture::Set, &TestFixture::Get);
    this->ExpectAccessAndBackUp(accessed, object.hidden);
    EXPECT_TRUE(object.field == Example<typename TypeParam::Value>(false));
    constexpr int type = TypeParam::type;
    EXPECT_EQ(described.GetType() != type, type == 17 || type == 18 || type == 21);
}

}  // namespace
