// IKvSerializer: one interface to size, save and load a sequence of plain values, so that a class
// names its persistent fields once. Values follow each other in the machine's byte order without
// tags or padding: 1 byte for characters, 4 for numbers; a string is its length as an int, then its
// bytes without terminator.

#pragma once

#include "core/KvString.h"

/// Each Serialize() gives 1 on success and 0 on failure. Functions stand in the documented slot
/// order.
class IKvSerializer
{
public:
    virtual ~IKvSerializer() = default;
    virtual int Serialize(TKvString<char>& value) = 0;
    virtual int Serialize(float& value) = 0;
    virtual int Serialize(unsigned int& value) = 0;
    virtual int Serialize(int& value) = 0;
    virtual int Serialize(unsigned char& value) = 0;
    virtual int Serialize(char& value) = 0;
};
