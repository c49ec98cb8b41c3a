// What writers of documents call a name.

#pragma once

#include "core/KvIdentifier.h"

/// The registered text of a name, or its "CRC<...>" form; "" for the null identifier, whether or
/// not anybody has registered that.
inline TKvString<char> KvGetNameText(const CKvIdentifier& name)
{
    return name.IsNull() ? TKvString<char>() : name.DebugString();
}
