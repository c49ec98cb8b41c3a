// The distinct names of a document of the binary form, in the order of their first use.

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/KvArray.h"
#include "core/KvIdentifier.h"

class CKvTmlNames
{
public:
    /// Starts with names that have been used already.
    explicit CKvTmlNames(const CKvArray<CKvIdentifier>& used = {});

    void Add(const CKvIdentifier& name)
    {
        std::uint32_t& slot = FindSlot(name);
        if (slot == kEmpty)
            Append(name, slot);
    }

    const CKvArray<CKvIdentifier>& Get() const { return m_names; }

private:
    static constexpr std::uint32_t kEmpty = 0;

    /// The slot that holds the name's number, or the empty one where it belongs.
    std::uint32_t& FindSlot(const CKvIdentifier& name)
    {
        std::size_t place = KvSaltedHash(name);
        while (IsTakenByOther(m_slots[place % m_slots.size()], name))
            ++place;
        return m_slots[place % m_slots.size()];
    }

    bool IsTakenByOther(std::uint32_t slot, const CKvIdentifier& name) const
    {
        return slot != kEmpty && m_names[static_cast<int>(slot) - 1] != name;
    }

    void Append(const CKvIdentifier& name, std::uint32_t& slot);
    void Grow();

    CKvArray<CKvIdentifier> m_names;

    /// Where each name stands in the list, counted from 1: a table of open addressing, never more
    /// than half full. Numbers take a quarter of the memory of names, and with it of the cache.
    std::vector<std::uint32_t> m_slots;
};
