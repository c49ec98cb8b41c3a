// CKvSerialSaver: writes a sequence of values into a buffer.

#pragma once

#include "serial/KvSerialBuffer.h"
#include "serial/KvSerializer.h"

/// After the first value that does not fit, every call fails.
///
/// Ownership: the buffer is the caller's and must outlive this object.
class CKvSerialSaver : public IKvSerializer
{
public:
    /// Units: \a length in bytes.
    CKvSerialSaver(unsigned char* buffer, unsigned long length) : m_buffer(buffer, length) {}

    /// A string whose bytes do not fit still leaves its length in the buffer.
    int Serialize(TKvString<char>& value) override;
    int Serialize(float& value) override;
    int Serialize(unsigned int& value) override;
    int Serialize(int& value) override;
    int Serialize(unsigned char& value) override;
    int Serialize(char& value) override;

    /// True once a value did not fit.
    bool hasOverflowed() const { return m_buffer.HasOverflowed(); }

    /// The bytes behind the last value that fitted.
    long getFlow() const { return m_buffer.GetFree(); }

    /// The size of the whole buffer in bytes.
    unsigned int getLength() const { return m_buffer.GetLength(); }

private:
    CKvSerialBuffer m_buffer;
};
