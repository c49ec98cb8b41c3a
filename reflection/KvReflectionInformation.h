// The description of one field of a class: its name, its kind, where it lives in the object, its
// default and range, and functions to access it where plain reading and writing will not do. With
// it, generic code reads, writes, saves and restores fields of classes it does not know.
//
// A class describes its fields in one array that is made on first use;
// reflection/KvReflectionField.h makes the entries from the fields themselves.

#pragma once

#include <cstdint>
#include <cstring>
#include <type_traits>

#include "core/KvArray.h"
#include "core/KvIdentifier.h"
#include "core/KvString.h"
#include "math/KvColor.h"
#include "math/KvEulerAngles.h"
#include "math/KvMatrix22.h"
#include "math/KvMatrix33.h"
#include "math/KvMatrix44.h"
#include "math/KvVector2.h"
#include "math/KvVector3.h"
#include "math/KvVector4.h"
#include "reflection/KvBasicVariant.h"
#include "reflection/KvEnum.h"
#include "reflection/KvUuid.h"

class CKvManaged;
class CKvResource;

/// A value that copies. Fields stand in the documented order.
///
/// Ownership: default, minimum, maximum and enumeration entry are the program's and outlive all
///            copies; an information refers to no object.
class CKvReflectionInformation
{
public:
    /// The kinds with the field's representation in the object. 0, 1, 25 and numbers above 26 are
    /// free for programs.
    enum EType : int
    {
        TYPE_BOOL = 2,             // bool, one byte
        TYPE_INT = 3,              // int
        TYPE_UINT = 4,             // unsigned int
        TYPE_INT64 = 5,            // std::int64_t
        TYPE_UINT64 = 6,           // std::uint64_t
        TYPE_FLOAT = 7,            // float
        TYPE_UUID = 8,             // kvUUID
        TYPE_COLOR = 9,            // CKvRGBA<float>
        TYPE_VECTOR2 = 10,         // CKvVector2
        TYPE_VECTOR3 = 11,         // CKvVector3
        TYPE_VECTOR4 = 12,         // CKvVector4
        TYPE_MATRIX22 = 13,        // CKvMatrix22
        TYPE_MATRIX33 = 14,        // CKvMatrix33
        TYPE_MATRIX44 = 15,        // CKvMatrix44
        TYPE_EULER_ANGLES = 16,    // CKvEulerAngles
        TYPE_ENUM = 17,            // int, or an enumeration of that size
        TYPE_TEXT = 18,            // TKvString<char>, a setting that snapshots leave alone
        TYPE_STRING = 19,          // TKvString<char>
        TYPE_WSTRING = 20,         // TKvString<wchar_t>
        TYPE_DATA_SET_ENUM = 21,   // int
        TYPE_SUB_OBJECT = 22,      // a structure with fields of its own
        TYPE_OBJECT = 23,          // CKvManaged*
        TYPE_RESOURCE_ARRAY = 24,  // CKvArray<CKvResource*>
        TYPE_RESOURCE = 26         // CKvResource*
    };

    /// Takes over a value. \a value is the address of a value of the field's kind, but for
    /// resources it is the CKvResource* itself.
    using Setter = void (*)(void* object, const void* value);

    /// Gives the address of the current value, for resources that of the pointer. It has to stay
    /// valid as long as the caller may use the result of a getter that gives a reference.
    using Getter = const void* (*)(const void* object);

    /// A nameless int at offset 0.
    CKvReflectionInformation() = default;

    /// A field at \a offset, which does not matter when both accessors are given. Default, minimum
    /// and maximum are the addresses of values of its kind, or null.
    CKvReflectionInformation(const CKvIdentifier& identifier, EType type, int offset,
                             void* defaultValue = nullptr, void* minValue = nullptr,
                             void* maxValue = nullptr, Setter setter = nullptr,
                             Getter getter = nullptr);

    /// A field that refers to something of the kind \a subType, such as a resource.
    CKvReflectionInformation(const CKvIdentifier& identifier, EType type, int offset,
                             void* defaultValue, void* minValue, void* maxValue,
                             const CKvIdentifier& subType, Setter setter = nullptr,
                             Getter getter = nullptr);

    /// A field of the kind TYPE_ENUM, described by the entry that \a enumeration gives; a null
    /// enumeration has none.
    CKvReflectionInformation(const CKvIdentifier& identifier, int offset, void* defaultValue,
                             void* minValue, void* maxValue, const SKvEnum* enumeration,
                             Setter setter = nullptr, Getter getter = nullptr);
    CKvReflectionInformation(const CKvIdentifier& identifier, int offset, void* defaultValue,
                             void* minValue, void* maxValue, const SKvEnum::SEntry* entry,
                             Setter setter = nullptr, Getter getter = nullptr);

    /// A structure whose fields \a subInformation describes, by offsets from its beginning.
    CKvReflectionInformation(const CKvIdentifier& identifier, EType type, int offset,
                             const CKvArray<CKvReflectionInformation>& subInformation,
                             Setter setter = nullptr, Getter getter = nullptr);

    CKvReflectionInformation(const CKvReflectionInformation&) = default;
    CKvReflectionInformation(CKvReflectionInformation&&) noexcept = default;
    CKvReflectionInformation& operator=(const CKvReflectionInformation&) = default;
    CKvReflectionInformation& operator=(CKvReflectionInformation&&) noexcept = default;
    virtual ~CKvReflectionInformation() = default;

    const CKvIdentifier& GetIdentifier() const { return m_identifier; }
    EType GetType() const { return m_type; }
    const CKvIdentifier& GetSubType() const { return m_subType; }
    const SKvEnum::SEntry* GetEnumReflexionInformation() const { return m_enumEntry; }
    int GetValueOffset() const { return m_valueOffset; }
    void* GetDefaultValue() const { return m_defaultValue; }
    void* GetMinValue() const { return m_minValue; }
    void* GetMaxValue() const { return m_maxValue; }
    const CKvArray<CKvReflectionInformation>& GetSubReflectionInformation() const
    {
        return m_subReflectionInformation;
    }

    /// Whether the reference that this very information set last was null; true before that. A
    /// list that was set is never null, be it empty.
    bool IsNull() const { return m_isNull; }
    void SetIsNull(bool isNull) { m_isNull = isNull; }

    // Typed access, by the accessor functions where there are any, else in the object. The caller
    // chooses by GetType(); nothing checks that the kinds match. Values may lie at any address, but
    // a getter that gives a reference needs a field that is aligned as its type asks.

    void SetValueBool(void* object, bool value) const { Write(object, value); }
    void SetValueInt(void* object, int value) const { Write(object, value); }
    void SetValueUInt(void* object, unsigned int value) const { Write(object, value); }
    void SetValueEnum(void* object, int value) const { Write(object, value); }
    void SetValueDataSetEnum(void* object, int value) const { Write(object, value); }
    void SetValueInt64(void* object, std::int64_t value) const { Write(object, value); }
    void SetValueUInt64(void* object, std::uint64_t value) const { Write(object, value); }
    void SetValueUUID(void* object, kvUUID value) const { Write(object, value); }
    void SetValueFloat(void* object, float value) const { Write(object, value); }
    void SetValueColor(void* object, const CKvRGBA<float>& value) const { Write(object, value); }
    void SetValueVector2(void* object, const CKvVector2& value) const { Write(object, value); }
    void SetValueVector3(void* object, const CKvVector3& value) const { Write(object, value); }
    void SetValueVector4(void* object, const CKvVector4& value) const { Write(object, value); }
    void SetValueMatrix22(void* object, const CKvMatrix22& value) const { Write(object, value); }
    void SetValueMatrix33(void* object, const CKvMatrix33& value) const { Write(object, value); }
    void SetValueMatrix44(void* object, const CKvMatrix44& value) const { Write(object, value); }
    void SetValueEulerAngles(void* object, const CKvEulerAngles& value) const
    {
        Write(object, value);
    }
    void SetValueString(void* object, const TKvString<char>& value) const { Write(object, value); }
    void SetValueWString(void* object, const TKvString<wchar_t>& value) const
    {
        Write(object, value);
    }

    // These also note whether the reference is null.
    void SetValueObject(void* object, CKvManaged* value);
    void SetValueResource(void* object, CKvResource* value);
    void SetValueResourceArray(void* object, const CKvArray<CKvResource*>& value);

    bool GetValueBool(const void* object) const { return Read<bool>(object); }
    int GetValueInt(const void* object) const { return Read<int>(object); }
    unsigned int GetValueUInt(const void* object) const { return Read<unsigned int>(object); }
    int GetValueEnum(const void* object) const { return Read<int>(object); }
    int GetValueDataSetEnum(const void* object) const { return Read<int>(object); }
    std::int64_t GetValueInt64(const void* object) const { return Read<std::int64_t>(object); }
    std::uint64_t GetValueUInt64(const void* object) const { return Read<std::uint64_t>(object); }
    kvUUID GetValueUUID(const void* object) const { return Read<kvUUID>(object); }
    float GetValueFloat(const void* object) const { return Read<float>(object); }
    CKvManaged* GetValueObject(const void* object) const { return Read<CKvManaged*>(object); }
    CKvResource* GetValueResource(const void* object) const { return Read<CKvResource*>(object); }

    // The reference is to the field itself.
    const CKvRGBA<float>& GetValueColor(const void* object) const
    {
        return Refer<CKvRGBA<float>>(object);
    }
    const CKvVector2& GetValueVector2(const void* object) const
    {
        return Refer<CKvVector2>(object);
    }
    const CKvVector3& GetValueVector3(const void* object) const
    {
        return Refer<CKvVector3>(object);
    }
    const CKvVector4& GetValueVector4(const void* object) const
    {
        return Refer<CKvVector4>(object);
    }
    const CKvMatrix22& GetValueMatrix22(const void* object) const
    {
        return Refer<CKvMatrix22>(object);
    }
    const CKvMatrix33& GetValueMatrix33(const void* object) const
    {
        return Refer<CKvMatrix33>(object);
    }
    const CKvMatrix44& GetValueMatrix44(const void* object) const
    {
        return Refer<CKvMatrix44>(object);
    }
    const CKvEulerAngles& GetValueEulerAngles(const void* object) const
    {
        return Refer<CKvEulerAngles>(object);
    }
    const TKvString<char>& GetValueString(const void* object) const
    {
        return Refer<TKvString<char>>(object);
    }
    const TKvString<wchar_t>& GetValueWString(const void* object) const
    {
        return Refer<TKvString<wchar_t>>(object);
    }
    const CKvArray<CKvResource*>& GetValueResourceArray(const void* object) const
    {
        return Refer<CKvArray<CKvResource*>>(object);
    }

    /// The address of the field, where the fields of a structure begin.
    void* GetValueSubObject(void* object) const { return FieldOf(object); }
    const void* GetValueSubObject(const void* object) const { return FieldOf(object); }

    /// The kind of variant that holds the field's value byte for byte. Bools, ints, enumerations,
    /// floats, colours, vectors, matrices and angles have one; the others, unsigned and 64-bit
    /// numbers among them, give TYPE_INVALID.
    CKvBasicVariant::EType GetVariantType() const;

    /// The current value by GetVariantType(); a new variant for the other kinds.
    CKvBasicVariant GetValueVariant(const void* object) const;

    /// Does nothing when the variant is not of the kind that the field has.
    void SetValueVariant(void* object, const CKvBasicVariant& value) const;

private:
    void* FieldOf(void* object) const
    {
        return static_cast<unsigned char*>(object) + m_valueOffset;
    }
    const void* FieldOf(const void* object) const
    {
        return static_cast<const unsigned char*>(object) + m_valueOffset;
    }
    const void* ValueOf(const void* object) const
    {
        return m_getter != nullptr ? m_getter(object) : FieldOf(object);
    }

    template <typename T>
    T Read(const void* object) const
    {
        T value;
        // A pointer is a value here. NOLINTNEXTLINE(bugprone-sizeof-expression)
        std::memcpy(&value, ValueOf(object), sizeof(T));
        return value;
    }

    template <typename T>
    const T& Refer(const void* object) const
    {
        return *static_cast<const T*>(ValueOf(object));
    }

    template <typename T>
    void Write(void* object, const T& value) const
    {
        if (m_setter != nullptr) {
            m_setter(object, &value);
        } else if constexpr (std::is_trivially_copyable_v<T>) {
            // By memmove, since the value may be the field.
            // NOLINTNEXTLINE(bugprone-sizeof-expression)
            std::memmove(FieldOf(object), &value, sizeof(T));
        } else {
            *static_cast<T*>(FieldOf(object)) = value;
        }
    }

    CKvIdentifier m_identifier;
    EType m_type = TYPE_INT;
    CKvIdentifier m_subType;
    const SKvEnum::SEntry* m_enumEntry = nullptr;
    int m_valueOffset = 0;
    void* m_defaultValue = nullptr;
    void* m_minValue = nullptr;
    void* m_maxValue = nullptr;
    CKvArray<CKvReflectionInformation> m_subReflectionInformation;
    bool m_isNull = true;
    Setter m_setter = nullptr;
    Getter m_getter = nullptr;
};
