#include "serial/KvSerialSaver.h"

#include <cstddef>
#include <cstring>

namespace {

/// Copies \a value into the buffer; 1 when it fitted.
template <typename T>
int Put(CKvSerialBuffer& buffer, const T& value)
{
    unsigned char* bytes = buffer.Advance(sizeof value);
    if (bytes == nullptr)
        return 0;
    std::memcpy(bytes, &value, sizeof value);
    return 1;
}

}  // namespace

int CKvSerialSaver::Serialize(TKvString<char>& value)
{
    int length = value.GetLength();
    if (Serialize(length) == 0)
        return 0;
    unsigned char* bytes = m_buffer.Advance(length);
    if (bytes == nullptr)
        return 0;
    if (length > 0)  // an empty buffer may be null
        std::memcpy(bytes, value.GetText(), static_cast<std::size_t>(length));
    return 1;
}

int CKvSerialSaver::Serialize(float& value)
{
    return Put(m_buffer, value);
}

int CKvSerialSaver::Serialize(unsigned int& value)
{
    return Put(m_buffer, value);
}

int CKvSerialSaver::Serialize(int& value)
{
    return Put(m_buffer, value);
}

int CKvSerialSaver::Serialize(unsigned char& value)
{
    return Put(m_buffer, value);
}

int CKvSerialSaver::Serialize(char& value)
{
    return Put(m_buffer, value);
}
