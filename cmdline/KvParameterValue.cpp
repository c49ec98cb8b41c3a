#include "cmdline/KvParameterValue.h"

#include <bit>
#include <cstring>

namespace KvCmdLine {

CKvParameterValue::CKvParameterValue(bool value) : m_type(PARAMETER_TYPE_BOOL)
{
    const unsigned char first = value ? 1 : 0;
    std::memcpy(&m_value, &first, sizeof first);
}

CKvParameterValue::CKvParameterValue(int value)
    : m_value(static_cast<std::uint32_t>(value)), m_type(PARAMETER_TYPE_INT)
{
}

CKvParameterValue::CKvParameterValue(float value)
    : m_value(std::bit_cast<std::uint32_t>(value)), m_type(PARAMETER_TYPE_FLOAT)
{
}

CKvParameterValue::operator bool() const
{
    unsigned char first = 0;
    std::memcpy(&first, &m_value, sizeof first);
    return first != 0;
}

CKvParameterValue::operator int() const
{
    return static_cast<int>(m_value);
}

CKvParameterValue::operator float() const
{
    return std::bit_cast<float>(m_value);
}

bool CKvParameterValue::IsEqual(const CKvParameterValue& other) const
{
    if (m_type != other.m_type)
        return false;
    switch (m_type) {
        case PARAMETER_TYPE_SWITCH:
        case PARAMETER_TYPE_BOOL:
            return static_cast<bool>(*this) == static_cast<bool>(other);
        case PARAMETER_TYPE_INT:
            return m_value == other.m_value;
        case PARAMETER_TYPE_FLOAT:
            return static_cast<float>(*this) == static_cast<float>(other);
        case PARAMETER_TYPE_STRING:
            return m_text == other.m_text;
    }
    return false;
}

}  // namespace KvCmdLine
