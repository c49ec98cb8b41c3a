#include "serial/KvSerialSizer.h"

int CKvSerialSizer::Serialize(TKvString<char>& value)
{
    const int length = value.GetLength();
    m_length += static_cast<std::uint32_t>(sizeof length) + static_cast<std::uint32_t>(length);
    return 1;
}

int CKvSerialSizer::Serialize(float& value)
{
    m_length += static_cast<std::uint32_t>(sizeof value);
    return 1;
}

int CKvSerialSizer::Serialize(unsigned int& value)
{
    m_length += static_cast<std::uint32_t>(sizeof value);
    return 1;
}

int CKvSerialSizer::Serialize(int& value)
{
    m_length += static_cast<std::uint32_t>(sizeof value);
    return 1;
}

int CKvSerialSizer::Serialize(unsigned char& value)
{
    m_length += static_cast<std::uint32_t>(sizeof value);
    return 1;
}

int CKvSerialSizer::Serialize(char& value)
{
    m_length += static_cast<std::uint32_t>(sizeof value);
    return 1;
}
