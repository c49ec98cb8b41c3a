// A name as a number: the 64-bit CRC of its text with ASCII case folded. Comparing, ordering and
// hashing use the number alone; the text is for diagnostics and is kept by CKvIdentifierManager.

#pragma once

#include <cstdint>

#include "core/KvCrc64.h"
#include "core/KvSaltedHash.h"
#include "core/KvString.h"

/// A plain value. Fields stand in the documented order.
///
/// Ownership: the text is the manager's and valid until its Release(); with the constructor from a
///            CRC and a text it is the caller's.
class CKvIdentifier
{
public:
    /// The null identifier: that of the empty text.
    constexpr CKvIdentifier() = default;

    /// The identifier with this value; its text is the registered one, or null.
    explicit CKvIdentifier(std::uint64_t crc);

    /// Stores both as given, without checking that they agree, and registers the text.
    CKvIdentifier(std::uint64_t crc, const char* text);

    /// The identifier of a text, which gets registered. A null text counts as empty.
    explicit CKvIdentifier(const char* text) { Set(text); }
    explicit CKvIdentifier(const TKvString<char>& text) { Set(text); }

    void Set(const char* text);
    void Set(const TKvString<char>& text) { Set(text.GetText()); }

    std::uint64_t GetCrc64() const { return m_crc; }
    bool IsNull() const { return m_crc == kKvCrc64Initial; }

    bool operator==(const CKvIdentifier& other) const { return m_crc == other.m_crc; }
    bool operator!=(const CKvIdentifier& other) const { return m_crc != other.m_crc; }

    /// Orders by the value as an unsigned number.
    bool operator<(const CKvIdentifier& other) const { return m_crc < other.m_crc; }

    /// The low 32 bits of the value, for tables that are keyed by identifiers.
    int HashTable_CreateHash() const { return static_cast<int>(static_cast<std::uint32_t>(m_crc)); }

    /// Always 0: the text belongs to the manager.
    int GetMemoryUsage() const { return 0; }

    /// The registered text, "" for the null identifier once the vocabulary is built. A value
    /// without registered text gives "<empty>" and logs a warning.
    const char* DebugCString() const;

    /// The registered text. A value without one gives "CRC<0123456789ABCDEF>", always with sixteen
    /// upper-case digits, and logs a warning.
    TKvString<char> DebugString() const;

    /// The identifier of this identifier's text followed by \a suffix. Where this text is not
    /// registered the value is right all the same, but has a text only if somebody registered it.
    CKvIdentifier Append(const char* suffix) const;

private:
    std::uint64_t m_crc = kKvCrc64Initial;
    const char* m_text = nullptr;
};

/// For tables that are keyed by identifiers, as TKvSaltedPolicy makes them.
inline std::uint32_t KvSaltedHash(const CKvIdentifier& identifier)
{
    return KvSaltedHash(identifier.GetCrc64());
}
