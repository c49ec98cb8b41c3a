// The identifiers of a document's names. A document has a handful of names, each thousands of
// times: remembering the last ones saves hashing them and asking the register, a fifth of a load.

#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/KvIdentifier.h"

class CKvNameCache
{
public:
    /// The identifier of \a name, which gets registered as always. The text must stay where it is
    /// while the cache is in use.
    const CKvIdentifier& Get(std::string_view name)
    {
        CEntry& entry = m_entries[GetPlace(name)];
        if (entry.name != name)
            Fill(entry, name);
        return entry.identifier;
    }

private:
    struct CEntry
    {
        std::string_view name;
        CKvIdentifier identifier;
    };

    /// Tells short names apart by what is at hand. Names that share a place take turns in it.
    static std::size_t GetPlace(std::string_view name)
    {
        const auto byte = [&](std::size_t i) -> std::size_t {
            return static_cast<unsigned char>(name[i]);
        };
        const std::size_t size = name.size();
        return (37 * size + 11 * byte(0) + 5 * byte(size - 1) + byte(size / 2)) % kEntryCount;
    }

    void Fill(CEntry& entry, std::string_view name);

    static constexpr std::size_t kEntryCount = 256;

    std::array<CEntry, kEntryCount> m_entries;
    std::string m_terminated;
};
