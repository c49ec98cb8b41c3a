#include "reflection/KvBasicVariant.h"

#include <cassert>
#include <cstddef>
#include <cstring>
#include <type_traits>

#include "core/KvText.h"

namespace {

using V = CKvBasicVariant;

struct CKind
{
    V::EType type;
    const char* name;
    int size;
    V::EType scalar;
};

template <typename T>
constexpr V::EType kScalarOf = std::is_same_v<T, float>          ? V::TYPE_FLOAT
                               : std::is_same_v<T, int>          ? V::TYPE_INT
                               : std::is_same_v<T, unsigned int> ? V::TYPE_UINT
                                                                 : V::TYPE_BOOL;

/// The row of a value structure. The argument only names its type.
template <typename T, int kCount, V::EType kType>
constexpr CKind Row(const char* name, V::TValue<T, kCount, kType>)
{
    return {kType, name, static_cast<int>(sizeof(T)) * kCount, kScalarOf<T>};
}

constexpr CKind kKinds[V::kTypeCount] = {
    Row("matrix4x4", V::BasicMat4x4{}),
    Row("matrix3x3", V::BasicMat3x3{}),
    Row("matrix2x2", V::BasicMat2x2{}),
    Row("vector4", V::BasicFloat4{}),
    Row("ivector4", V::BasicInt4{}),
    Row("uvector4", V::BasicUint4{}),
    Row("bvector4", V::BasicBool4{}),
    Row("rgbaf", V::BasicRGBAf{}),
    Row("vector3", V::BasicFloat3{}),
    Row("eulerangles", V::BasicEulerAngles{}),
    Row("ivector3", V::BasicInt3{}),
    Row("uvector3", V::BasicUint3{}),
    Row("bvector3", V::BasicBool3{}),
    Row("rgbf", V::BasicRGBf{}),
    Row("vector2", V::BasicFloat2{}),
    Row("ivector2", V::BasicInt2{}),
    Row("uvector2", V::BasicUint2{}),
    Row("bvector2", V::BasicBool2{}),
    Row("float", V::TValue<float, 1, V::TYPE_FLOAT>{}),
    Row("int", V::TValue<int, 1, V::TYPE_INT>{}),
    Row("uint", V::TValue<unsigned int, 1, V::TYPE_UINT>{}),
    Row("bool", V::TValue<bool, 1, V::TYPE_BOOL>{}),
};

constexpr bool RowsStandInTheOrderOfTheKindsAndFit()
{
    for (int i = 0; i < V::kTypeCount; ++i) {
        if (kKinds[i].type != i || kKinds[i].size > V::max_value_byte_size)
            return false;
    }
    return true;
}
static_assert(RowsStandInTheOrderOfTheKindsAndFit());
static_assert(sizeof(bool) == 1 && sizeof(int) == 4 && sizeof(float) == 4);
static_assert(std::is_trivially_copyable_v<V> && sizeof(V) == 4 + V::max_value_byte_size);

template <typename T>
constexpr std::array<T, V::kTypeCount> Column(T CKind::*member)
{
    std::array<T, V::kTypeCount> column = {};
    for (std::size_t i = 0; i < column.size(); ++i)
        column[i] = kKinds[i].*member;
    return column;
}

/// The type's entry of a column, or \a otherwise when there is no such type.
template <typename T>
T Look(const std::array<T, V::kTypeCount>& column, V::EType type, T otherwise)
{
    assert(V::IsValidEType(type));
    return V::IsValidEType(type) ? column[static_cast<std::size_t>(type)] : otherwise;
}

}  // namespace

constexpr std::array<const char*, V::kTypeCount> CKvBasicVariant::TypeName = Column(&CKind::name);
constexpr std::array<int, V::kTypeCount> CKvBasicVariant::TypeSize = Column(&CKind::size);
constexpr std::array<V::EType, V::kTypeCount> CKvBasicVariant::TypeComponentScalarType =
    Column(&CKind::scalar);

int CKvBasicVariant::GetETypeByteSize(EType type)
{
    return Look(TypeSize, type, 0);
}

const char* CKvBasicVariant::GetETypeName(EType type)
{
    return Look(TypeName, type, "");
}

CKvBasicVariant::EType CKvBasicVariant::GetETypeComponentScalarType(EType type)
{
    return Look(TypeComponentScalarType, type, TYPE_INVALID);
}

int CKvBasicVariant::GetETypeNumComponents(EType type)
{
    const int size = GetETypeByteSize(type);
    return size > 0 ? size / GetETypeByteSize(GetETypeComponentScalarType(type)) : 0;
}

CKvBasicVariant::EType CKvBasicVariant::GetETypeEnumFromName(const char* name)
{
    for (const CKind& kind : kKinds) {
        if (kvStrcmp(kind.name, name) == 0)
            return kind.type;
    }
    return TYPE_INVALID;
}

void CKvBasicVariant::SetValueFromMemory(const void* bytes, EType type)
{
    assert(IsValidEType(type));
    if (!IsValidEType(type))
        return;
    m_type = type;
    std::memmove(m_data, bytes, static_cast<std::size_t>(ByteSize()));  // may come from here
}

void CKvBasicVariant::MemoryCopyTo(void* destination) const
{
    std::memmove(destination, m_data, static_cast<std::size_t>(ByteSize()));
}
