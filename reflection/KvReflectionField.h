// Descriptions made from the fields themselves, for the arrays in which classes describe them:
//
//   const CKvArray<CKvReflectionInformation>& CEntity::GetReflectionInformationArray() const
//   {
//       static const CKvArray<CKvReflectionInformation> s_fields = [this] {
//           CKvArray<CKvReflectionInformation> fields =
//           CKvManaged::GetReflectionInformationArray(); fields.Add(KvDescribeField("health", this,
//           m_health)); fields.Add(KvDescribeField("position", this, m_position)); return fields;
//       }();
//       return s_fields;
//   }
//
// Offsets are measured in a living object, since offsetof is not for classes with virtual
// functions.

#pragma once

#include <cstdint>
#include <type_traits>

#include "reflection/KvReflectionInformation.h"

/// Where \a field lies in \a object, for CKvReflectionInformation's constructors. \a object is the
/// address that the accessors will be handed: where CKvManaged is not the first base of a class,
/// `static_cast<const CKvManaged*>(this)`.
inline int KvFieldOffset(const void* object, const void* field)
{
    return static_cast<int>(reinterpret_cast<std::uintptr_t>(field) -
                            reinterpret_cast<std::uintptr_t>(object));
}

/// The kind of a field by its C++ type; only these types have one.
struct CKvFieldType
{
    using Information = CKvReflectionInformation;
    using EType = Information::EType;
    template <typename T>
    using Is = std::type_identity<T>;

    static constexpr EType Of(Is<bool>) { return Information::TYPE_BOOL; }
    static constexpr EType Of(Is<int>) { return Information::TYPE_INT; }
    static constexpr EType Of(Is<unsigned int>) { return Information::TYPE_UINT; }
    static constexpr EType Of(Is<std::int64_t>) { return Information::TYPE_INT64; }
    static constexpr EType Of(Is<std::uint64_t>) { return Information::TYPE_UINT64; }
    static constexpr EType Of(Is<float>) { return Information::TYPE_FLOAT; }
    static constexpr EType Of(Is<kvUUID>) { return Information::TYPE_UUID; }
    static constexpr EType Of(Is<CKvRGBA<float>>) { return Information::TYPE_COLOR; }
    static constexpr EType Of(Is<CKvVector2>) { return Information::TYPE_VECTOR2; }
    static constexpr EType Of(Is<CKvVector3>) { return Information::TYPE_VECTOR3; }
    static constexpr EType Of(Is<CKvVector4>) { return Information::TYPE_VECTOR4; }
    static constexpr EType Of(Is<CKvMatrix22>) { return Information::TYPE_MATRIX22; }
    static constexpr EType Of(Is<CKvMatrix33>) { return Information::TYPE_MATRIX33; }
    static constexpr EType Of(Is<CKvMatrix44>) { return Information::TYPE_MATRIX44; }
    static constexpr EType Of(Is<CKvEulerAngles>) { return Information::TYPE_EULER_ANGLES; }
    static constexpr EType Of(Is<TKvString<char>>) { return Information::TYPE_STRING; }
    static constexpr EType Of(Is<TKvString<wchar_t>>) { return Information::TYPE_WSTRING; }
    static constexpr EType Of(Is<CKvManaged*>) { return Information::TYPE_OBJECT; }
    static constexpr EType Of(Is<CKvResource*>) { return Information::TYPE_RESOURCE; }
    static constexpr EType Of(Is<CKvArray<CKvResource*>>)
    {
        return Information::TYPE_RESOURCE_ARRAY;
    }
};

/// Describes \a field of \a object, its kind by its C++ type. Further arguments are those that
/// follow the offset in CKvReflectionInformation's constructors. Settings' texts, enumerations and
/// structures use those constructors, with KvFieldOffset().
template <typename T, typename... TMore>
CKvReflectionInformation KvDescribeField(const char* name, const void* object, const T& field,
                                         const TMore&... more)
{
    return CKvReflectionInformation(CKvIdentifier(name), CKvFieldType::Of(std::type_identity<T>()),
                                    KvFieldOffset(object, &field), more...);
}
