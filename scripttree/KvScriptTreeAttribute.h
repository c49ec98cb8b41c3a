// One named value of a script tree node. The value is held as text: typed constructors format it at
// once and record a type code, typed reads (of the node) parse it again.

#pragma once

#include <cstdint>

#include "core/KvIdentifier.h"
#include "core/KvString.h"

struct CKvQuaternion;
struct CKvVector3;
template <typename T>
struct CKvRGB;
template <typename T>
struct CKvRGBA;

/// Fields stand in the documented order; the destructor is the only virtual function.
class CKvScriptTreeAttribute
{
public:
    /// How the value was given. Carried along only: no reader or writer depends on it.
    enum EType : int
    {
        TYPE_NONE = 0,
        TYPE_U64 = 1,
        TYPE_INT = 2,
        TYPE_FLOAT = 3,
        TYPE_STRING = 4,
        TYPE_VECTOR3 = 5,
        TYPE_QUATERNION = 6,
        TYPE_RGB = 7,
        TYPE_RGBA = 8
    };

    CKvScriptTreeAttribute() = default;

    /// Text, kept as it is; null gives "".
    CKvScriptTreeAttribute(const CKvIdentifier& identifier, const char* value);
    CKvScriptTreeAttribute(const CKvIdentifier& identifier, const TKvString<char>& value);
    CKvScriptTreeAttribute(const CKvIdentifier& identifier, TKvString<char>&& value);

    /// Wide text, kept as UTF-8.
    CKvScriptTreeAttribute(const CKvIdentifier& identifier, const TKvString<wchar_t>& value);

    /// "0X" and sixteen upper-case hexadecimal digits. Both 64-bit spellings serve.
    CKvScriptTreeAttribute(const CKvIdentifier& identifier, unsigned long long value);
    CKvScriptTreeAttribute(const CKvIdentifier& identifier, unsigned long value);

    /// "%d".
    CKvScriptTreeAttribute(const CKvIdentifier& identifier, int value);

    /// "%d" of the bits as a signed number (4294967295 gives "-1"); the type is TYPE_U64.
    CKvScriptTreeAttribute(const CKvIdentifier& identifier, unsigned int value);

    /// "%f", six decimals each, separated by blanks, in storage order. A double is for the caller
    /// to narrow: 1.5f.
    CKvScriptTreeAttribute(const CKvIdentifier& identifier, float value);
    CKvScriptTreeAttribute(const CKvIdentifier& identifier, const CKvVector3& value);
    CKvScriptTreeAttribute(const CKvIdentifier& identifier, const CKvQuaternion& value);
    CKvScriptTreeAttribute(const CKvIdentifier& identifier, const CKvRGB<float>& value);
    CKvScriptTreeAttribute(const CKvIdentifier& identifier, const CKvRGBA<float>& value);

    CKvScriptTreeAttribute(const CKvScriptTreeAttribute&) = default;
    CKvScriptTreeAttribute(CKvScriptTreeAttribute&&) noexcept = default;
    CKvScriptTreeAttribute& operator=(const CKvScriptTreeAttribute&) = default;
    CKvScriptTreeAttribute& operator=(CKvScriptTreeAttribute&&) noexcept = default;
    virtual ~CKvScriptTreeAttribute();

    /// Equal in name, text, raw value and type.
    bool operator==(const CKvScriptTreeAttribute& other) const;

    const CKvIdentifier& GetIdentifier() const { return m_identifier; }
    CKvIdentifier& GetIdentifier() { return m_identifier; }
    void SetIdentifier(const CKvIdentifier& identifier) { m_identifier = identifier; }

    EType GetType() const { return m_type; }

    /// Overwrites the code; the text stays.
    void SetType(EType type) { m_type = type; }

    const TKvString<char>& GetValue() const { return m_value; }
    TKvString<char>& GetValue() { return m_value; }

    /// Replaces the text; type and raw value stay.
    void SetValue(const TKvString<char>& value) { m_value = value; }

    /// The text decoded from UTF-8.
    TKvString<wchar_t> GetWValue() const;

    /// Replaces the text by the UTF-8 form of \a value; the type becomes TYPE_STRING.
    void SetWValue(const TKvString<wchar_t>& value);

private:
    CKvScriptTreeAttribute(const CKvIdentifier& identifier, EType type, const float* values,
                           int count);

    CKvIdentifier m_identifier;
    EType m_type = TYPE_NONE;
    TKvString<char> m_value;

    /// The number given to the unsigned constructors, else 0. Comparison and assignment alone use
    /// it.
    std::uint64_t m_rawValue = 0;
};
