#include "reflection/KvReflectionInformation.h"

namespace {

using Information = CKvReflectionInformation;
using Variant = CKvBasicVariant;

struct CStoredKind
{
    Information::EType type;
    Variant::EType variantType;
};

/// The kinds that a variant holds byte for byte. Unsigned ints are none of them: saved values come
/// in these kinds alone.
constexpr CStoredKind kStoredKinds[] = {
    {Information::TYPE_BOOL, Variant::TYPE_BOOL},
    {Information::TYPE_INT, Variant::TYPE_INT},
    {Information::TYPE_ENUM, Variant::TYPE_INT},
    {Information::TYPE_FLOAT, Variant::TYPE_FLOAT},
    {Information::TYPE_COLOR, Variant::TYPE_RGBAF},
    {Information::TYPE_VECTOR2, Variant::TYPE_VECTOR2},
    {Information::TYPE_VECTOR3, Variant::TYPE_VECTOR3},
    {Information::TYPE_VECTOR4, Variant::TYPE_VECTOR4},
    {Information::TYPE_MATRIX22, Variant::TYPE_MATRIX2X2},
    {Information::TYPE_MATRIX33, Variant::TYPE_MATRIX3X3},
    {Information::TYPE_MATRIX44, Variant::TYPE_MATRIX4X4},
    {Information::TYPE_EULER_ANGLES, Variant::TYPE_EULERANGLES},
};

// Setters are handed the address of a variant's data, where they read one of these.
static_assert(alignof(Variant) % alignof(int) == 0 && alignof(Variant) % alignof(float) == 0 &&
              alignof(Variant) % alignof(CKvMatrix44) == 0);

}  // namespace

CKvReflectionInformation::CKvReflectionInformation(const CKvIdentifier& identifier, EType type,
                                                   int offset, void* defaultValue, void* minValue,
                                                   void* maxValue, Setter setter, Getter getter)
    : CKvReflectionInformation(identifier, type, offset, defaultValue, minValue, maxValue,
                               CKvIdentifier(), setter, getter)
{
}

CKvReflectionInformation::CKvReflectionInformation(const CKvIdentifier& identifier, EType type,
                                                   int offset, void* defaultValue, void* minValue,
                                                   void* maxValue, const CKvIdentifier& subType,
                                                   Setter setter, Getter getter)
    : m_identifier(identifier),
      m_type(type),
      m_subType(subType),
      m_valueOffset(offset),
      m_defaultValue(defaultValue),
      m_minValue(minValue),
      m_maxValue(maxValue),
      m_setter(setter),
      m_getter(getter)
{
}

CKvReflectionInformation::CKvReflectionInformation(const CKvIdentifier& identifier, int offset,
                                                   void* defaultValue, void* minValue,
                                                   void* maxValue, const SKvEnum* enumeration,
                                                   Setter setter, Getter getter)
    : CKvReflectionInformation(identifier, offset, defaultValue, minValue, maxValue,
                               enumeration != nullptr ? enumeration->GetEntry() : nullptr, setter,
                               getter)
{
}

CKvReflectionInformation::CKvReflectionInformation(const CKvIdentifier& identifier, int offset,
                                                   void* defaultValue, void* minValue,
                                                   void* maxValue, const SKvEnum::SEntry* entry,
                                                   Setter setter, Getter getter)
    : CKvReflectionInformation(identifier, TYPE_ENUM, offset, defaultValue, minValue, maxValue,
                               setter, getter)
{
    m_enumEntry = entry;
}

CKvReflectionInformation::CKvReflectionInformation(
    const CKvIdentifier& identifier, EType type, int offset,
    const CKvArray<CKvReflectionInformation>& subInformation, Setter setter, Getter getter)
    : CKvReflectionInformation(identifier, type, offset, nullptr, nullptr, nullptr, setter, getter)
{
    m_subReflectionInformation = subInformation;
}

void CKvReflectionInformation::SetValueObject(void* object, CKvManaged* value)
{
    Write(object, value);
    m_isNull = value == nullptr;
}

void CKvReflectionInformation::SetValueResource(void* object, CKvResource* value)
{
    if (m_setter != nullptr)
        m_setter(object, value);
    else
        Write(object, value);
    m_isNull = value == nullptr;
}

void CKvReflectionInformation::SetValueResourceArray(void* object,
                                                     const CKvArray<CKvResource*>& value)
{
    Write(object, value);
    m_isNull = false;
}

CKvBasicVariant::EType CKvReflectionInformation::GetVariantType() const
{
    for (const CStoredKind& kind : kStoredKinds) {
        if (kind.type == m_type)
            return kind.variantType;
    }
    return Variant::TYPE_INVALID;
}

CKvBasicVariant CKvReflectionInformation::GetValueVariant(const void* object) const
{
    CKvBasicVariant value;
    const Variant::EType type = GetVariantType();
    if (Variant::IsValidEType(type))
        value.SetValueFromMemory(ValueOf(object), type);
    return value;
}

void CKvReflectionInformation::SetValueVariant(void* object, const CKvBasicVariant& value) const
{
    if (value.GetEType() != GetVariantType())
        return;
    if (m_setter != nullptr)
        m_setter(object, value.GetConstDataPtr());
    else
        value.MemoryCopyTo(FieldOf(object));
}
