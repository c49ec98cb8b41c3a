#include "scripttree/KvScriptTreeAttribute.h"

#include <array>
#include <utility>

#include "core/KvNumberText.h"
#include "core/KvUnicode.h"
#include "math/KvColor.h"
#include "math/KvQuaternion.h"
#include "math/KvVector3.h"

namespace {

/// The units that "%f" of a float can take, and the most floats of one value.
constexpr std::size_t kFloatTextSize = 48;
constexpr std::size_t kMaxFloats = 4;

TKvString<char> EncodeUtf8(const TKvString<wchar_t>& wide)
{
    const int size = kvEncodeUCS2ToUTF8(wide.GetText(), nullptr, -1);
    TKvString<char> text;
    text.SetLength(size);
    if (char* buffer = text.GetBuffer())
        kvEncodeUCS2ToUTF8(wide.GetText(), buffer, size);
    return text;
}

}  // namespace

CKvScriptTreeAttribute::CKvScriptTreeAttribute(const CKvIdentifier& identifier, const char* value)
    : m_identifier(identifier), m_type(TYPE_STRING), m_value(value)
{
}

CKvScriptTreeAttribute::CKvScriptTreeAttribute(const CKvIdentifier& identifier,
                                               const TKvString<char>& value)
    : m_identifier(identifier), m_type(TYPE_STRING), m_value(value)
{
}

CKvScriptTreeAttribute::CKvScriptTreeAttribute(const CKvIdentifier& identifier,
                                               TKvString<char>&& value)
    : m_identifier(identifier), m_type(TYPE_STRING), m_value(std::move(value))
{
}

CKvScriptTreeAttribute::CKvScriptTreeAttribute(const CKvIdentifier& identifier,
                                               const TKvString<wchar_t>& value)
    : m_identifier(identifier), m_type(TYPE_STRING), m_value(EncodeUtf8(value))
{
}

CKvScriptTreeAttribute::CKvScriptTreeAttribute(const CKvIdentifier& identifier,
                                               unsigned long long value)
    : m_identifier(identifier), m_type(TYPE_U64), m_rawValue(value)
{
    std::array<char, 19> text;
    kvU64ToHexString(value, text.data());
    m_value = text.data();
}

CKvScriptTreeAttribute::CKvScriptTreeAttribute(const CKvIdentifier& identifier, unsigned long value)
    : CKvScriptTreeAttribute(identifier, static_cast<unsigned long long>(value))
{
}

CKvScriptTreeAttribute::CKvScriptTreeAttribute(const CKvIdentifier& identifier, int value)
    : m_identifier(identifier), m_type(TYPE_INT)
{
    std::array<char, 12> text;
    kvIntToString(value, text.data());
    m_value = text.data();
}

CKvScriptTreeAttribute::CKvScriptTreeAttribute(const CKvIdentifier& identifier, unsigned int value)
    : CKvScriptTreeAttribute(identifier, static_cast<int>(value))
{
    m_type = TYPE_U64;
    m_rawValue = value;
}

CKvScriptTreeAttribute::CKvScriptTreeAttribute(const CKvIdentifier& identifier, float value)
    : CKvScriptTreeAttribute(identifier, TYPE_FLOAT, &value, 1)
{
}

CKvScriptTreeAttribute::CKvScriptTreeAttribute(const CKvIdentifier& identifier,
                                               const CKvVector3& value)
    : CKvScriptTreeAttribute(identifier, TYPE_VECTOR3,
                             std::array<float, 3>{value.x, value.y, value.z}.data(), 3)
{
}

CKvScriptTreeAttribute::CKvScriptTreeAttribute(const CKvIdentifier& identifier,
                                               const CKvQuaternion& value)
    : CKvScriptTreeAttribute(identifier, TYPE_QUATERNION,
                             std::array<float, 4>{value.x, value.y, value.z, value.w}.data(), 4)
{
}

CKvScriptTreeAttribute::CKvScriptTreeAttribute(const CKvIdentifier& identifier,
                                               const CKvRGB<float>& value)
    : CKvScriptTreeAttribute(identifier, TYPE_RGB,
                             std::array<float, 3>{value.r, value.g, value.b}.data(), 3)
{
}

CKvScriptTreeAttribute::CKvScriptTreeAttribute(const CKvIdentifier& identifier,
                                               const CKvRGBA<float>& value)
    : CKvScriptTreeAttribute(identifier, TYPE_RGBA,
                             std::array<float, 4>{value.r, value.g, value.b, value.a}.data(), 4)
{
}

CKvScriptTreeAttribute::CKvScriptTreeAttribute(const CKvIdentifier& identifier, EType type,
                                               const float* values, int count)
    : m_identifier(identifier), m_type(type)
{
    std::array<char, kFloatTextSize * kMaxFloats> text;
    const int length = kvFloatsToString(values, count, text.data());
    m_value = TKvString<char>::OfLength(text.data(), length);
}

CKvScriptTreeAttribute::~CKvScriptTreeAttribute() = default;

bool CKvScriptTreeAttribute::operator==(const CKvScriptTreeAttribute& other) const
{
    return m_identifier == other.m_identifier && m_value == other.m_value &&
           m_rawValue == other.m_rawValue && m_type == other.m_type;
}

TKvString<wchar_t> CKvScriptTreeAttribute::GetWValue() const
{
    const int length = kvDecodeUTF8ToUCS2(m_value.GetText(), nullptr, -1);
    TKvString<wchar_t> wide;
    wide.SetLength(length);
    if (wchar_t* buffer = wide.GetBuffer())
        kvDecodeUTF8ToUCS2(m_value.GetText(), buffer, length);
    return wide;
}

void CKvScriptTreeAttribute::SetWValue(const TKvString<wchar_t>& value)
{
    m_value = EncodeUtf8(value);
    m_type = TYPE_STRING;
}
