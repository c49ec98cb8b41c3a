// The distinct names of a document of the binary form, in the order of their first use.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_set>
#include <utility>

#include "core/KvArray.h"
#include "core/KvIdentifier.h"
#include "core/KvSaltedHash.h"

class CKvTmlNames
{
public:
    /// Starts with names that have been used already.
    explicit CKvTmlNames(const CKvArray<CKvIdentifier>& used = {})
    {
        m_lately[0] = 1;  // at first no place holds a value of its own
        for (const CKvIdentifier& name : used)
            Add(name);
    }

    void Add(const CKvIdentifier& name)
    {
        const std::uint64_t crc = name.GetCrc64();
        std::uint64_t& lately = m_lately[crc % m_lately.size()];
        if (lately == crc)
            return;
        lately = crc;
        if (m_seen.insert(crc).second)
            m_names.Add(name);
    }

    const CKvArray<CKvIdentifier>& Get() const { return m_names; }

private:
    CKvArray<CKvIdentifier> m_names;
    std::unordered_set<std::uint64_t, CKvSaltedHash> m_seen;

    /// Names seen lately, each in the place of its value's low bits: nearly every name is one of
    /// few, and finding it here saves a look-up in the set.
    std::array<std::uint64_t, 256> m_lately = {};
};
