// The value of a switch or an argument: a flag, a number or a text. Its type is the type of the
// parameter that it is the default value of.

#pragma once

#include <cstdint>

#include "core/KvString.h"

namespace KvCmdLine {

enum EKvParameterType : std::int32_t
{
    /// A flag that is given or not.
    PARAMETER_TYPE_SWITCH = 0,
    /// A flag that can be switched on and off.
    PARAMETER_TYPE_BOOL = 1,
    PARAMETER_TYPE_INT = 2,
    PARAMETER_TYPE_FLOAT = 3,
    PARAMETER_TYPE_STRING = 4
};

class CKvParameterValue
{
public:
    /// A switch, true.
    CKvParameterValue() : CKvParameterValue(true) { m_type = PARAMETER_TYPE_SWITCH; }

    CKvParameterValue(bool value);
    CKvParameterValue(int value);
    CKvParameterValue(float value);

    /// A copy of the text; null is the empty text.
    CKvParameterValue(const char* text) : m_text(text), m_type(PARAMETER_TYPE_STRING) {}

    /// A value of this type: false, 0 or the empty text.
    CKvParameterValue(EKvParameterType type) : m_type(type) {}

    /// These read the 32 bits of the value as their type, whatever the type of the value is: the
    /// float of the int 1 is the smallest denormal number, and every number of a text is 0.
    operator bool() const;
    operator int() const;
    operator float() const;

    /// The text, "" unless it is a text's value; valid until the value changes.
    operator const char*() const { return m_text.GetText(); }

    [[nodiscard]] EKvParameterType GetType() const { return m_type; }

    /// Values of two types differ, and so do values of a type that is none of the enumeration, and
    /// NaNs.
    [[nodiscard]] friend bool operator==(const CKvParameterValue& first,
                                         const CKvParameterValue& second)
    {
        return first.IsEqual(second);
    }

private:
    [[nodiscard]] bool IsEqual(const CKvParameterValue& other) const;

    // In the documented order.
    std::uint32_t m_value = 0;  ///< a bool (first byte), an int or a float
    TKvString<char> m_text;
    EKvParameterType m_type;
};

}  // namespace KvCmdLine
