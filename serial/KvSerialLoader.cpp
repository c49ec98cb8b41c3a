#include "serial/KvSerialLoader.h"

#include <cstring>

namespace {

/// Copies the next bytes into \a value; 1 when there were enough.
template <typename T>
int Take(CKvSerialBuffer& buffer, T& value)
{
    const unsigned char* bytes = buffer.Advance(sizeof value);
    if (bytes == nullptr)
        return 0;
    std::memcpy(&value, bytes, sizeof value);
    return 1;
}

}  // namespace

int CKvSerialLoader::Serialize(TKvString<char>& value)
{
    int length = 0;
    if (Serialize(length) == 0)
        return 0;
    const unsigned char* bytes = m_buffer.Advance(length);
    if (bytes == nullptr)
        return 0;
    value = TKvString<char>(reinterpret_cast<const char*>(bytes), length);
    return 1;
}

int CKvSerialLoader::Serialize(float& value)
{
    return Take(m_buffer, value);
}

int CKvSerialLoader::Serialize(unsigned int& value)
{
    return Take(m_buffer, value);
}

int CKvSerialLoader::Serialize(int& value)
{
    return Take(m_buffer, value);
}

int CKvSerialLoader::Serialize(unsigned char& value)
{
    return Take(m_buffer, value);
}

int CKvSerialLoader::Serialize(char& value)
{
    return Take(m_buffer, value);
}
