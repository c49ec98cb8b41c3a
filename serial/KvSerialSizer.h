// CKvSerialSizer: counts the bytes that a sequence of values takes, for the buffer to save it into.

#pragma once

#include <cstdint>

#include "serial/KvSerializer.h"

/// Never fails and changes no value.
class CKvSerialSizer : public IKvSerializer
{
public:
    int Serialize(TKvString<char>& value) override;
    int Serialize(float& value) override;
    int Serialize(unsigned int& value) override;
    int Serialize(int& value) override;
    int Serialize(unsigned char& value) override;
    int Serialize(char& value) override;

    /// The bytes counted so far.
    unsigned int GetLength() const { return m_length; }

private:
    std::uint32_t m_length = 0;
};
