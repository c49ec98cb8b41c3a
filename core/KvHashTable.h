// The open-addressing hash table of the library: slots of pointers to entries, linear probing,
// never more than a quarter full when an entry is placed. The caller owns the entries.

#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <vector>

/// TPolicy supplies, as static members: `Key`, `GetKey(const TEntry&)`, `MatchKey(const TEntry&,
/// key)` and `CreateHash(key)`, a signed int whose low bits choose the start slot.
///
/// An entry's key must not change while the entry is in a table: take it out, change the key, and
/// place it again. Where keys come from outside, TKvSaltedPolicy keeps probing short.
template <class TEntry, class TPolicy>
class TKvHashTable
{
public:
    using Key = typename TPolicy::Key;

    /// Makes 2 to the power of \a log2SlotCount slots, all empty; two at least.
    explicit TKvHashTable(int log2SlotCount = 8) : m_slots(std::size_t{1} << log2SlotCount)
    {
        assert(log2SlotCount >= 1);
    }

    TKvHashTable(const TKvHashTable&) = delete;
    TKvHashTable& operator=(const TKvHashTable&) = delete;

    int GetCount() const { return m_count; }
    int GetSlotCount() const { return static_cast<int>(m_slots.size()); }

    /// The entry in one slot, or null; slots are numbered from 0 to GetSlotCount() - 1.
    TEntry* GetSlot(int slot) const { return m_slots[static_cast<std::size_t>(slot)].entry; }

    /// The entry with this key, or null.
    TEntry* Find(const Key& key) const;

    /// Places an entry in the first empty slot from its start slot on. The slots are doubled first
    /// when a quarter of them is taken, also where the insertion is then refused.
    ///
    /// Ownership: the entry stays the caller's, who keeps it until it is removed.
    /// Errors:    true, and nothing changed, when this very entry is in the table already; false
    ///            when another one has the same key, which stays.
    bool Insert(TEntry* entry);

    /// Takes an entry out and moves later ones of its cluster back, so that no marker is left and
    /// every other entry is found as before.
    ///
    /// Errors: false when this very entry is not in the table, whoever else has its key.
    bool Remove(const TEntry* entry);

    /// Empties all slots; their number stays.
    void Clear();

private:
    /// The hash is kept so that passing over an entry and moving it need not look into it.
    struct CSlot
    {
        TEntry* entry = nullptr;
        std::uint32_t hash = 0;
    };

    static std::uint32_t GetHash(const Key& key)
    {
        return static_cast<std::uint32_t>(TPolicy::CreateHash(key));
    }

    std::size_t GetMask() const { return m_slots.size() - 1; }

    /// The steps from one slot, or from the start slot of a hash, to another.
    std::size_t GetDistance(std::size_t from, std::size_t to) const
    {
        return (to - from) & GetMask();
    }

    /// The first slot, in probing order, that is empty or wanted.
    template <class TIsWanted>
    std::size_t Probe(std::uint32_t hash, TIsWanted isWanted) const;
    std::size_t ProbeForKey(std::uint32_t hash, const Key& key) const;
    void Grow();

    int m_count = 0;
    std::vector<CSlot> m_slots;
};

// ------------------------------------------------------------------------------------------------

template <class TEntry, class TPolicy>
template <class TIsWanted>
std::size_t TKvHashTable<TEntry, TPolicy>::Probe(std::uint32_t hash, TIsWanted isWanted) const
{
    std::size_t slot = hash & GetMask();
    while (m_slots[slot].entry != nullptr && !isWanted(m_slots[slot]))
        slot = (slot + 1) & GetMask();
    return slot;
}

template <class TEntry, class TPolicy>
std::size_t TKvHashTable<TEntry, TPolicy>::ProbeForKey(std::uint32_t hash, const Key& key) const
{
    return Probe(hash, [&](const CSlot& slot) {
        return slot.hash == hash && TPolicy::MatchKey(*slot.entry, key);
    });
}

template <class TEntry, class TPolicy>
TEntry* TKvHashTable<TEntry, TPolicy>::Find(const Key& key) const
{
    return m_slots[ProbeForKey(GetHash(key), key)].entry;
}

template <class TEntry, class TPolicy>
bool TKvHashTable<TEntry, TPolicy>::Insert(TEntry* entry)
{
    if (static_cast<std::size_t>(m_count) * 4 >= m_slots.size())
        Grow();
    const auto& key = TPolicy::GetKey(*entry);
    const std::uint32_t hash = GetHash(key);
    CSlot& slot = m_slots[ProbeForKey(hash, key)];
    if (slot.entry != nullptr)
        return slot.entry == entry;
    slot = {entry, hash};
    ++m_count;
    return true;
}

// Deletion under linear probing: Knuth, The Art of Computer Programming, volume 3, 6.4, algorithm
// R.
template <class TEntry, class TPolicy>
bool TKvHashTable<TEntry, TPolicy>::Remove(const TEntry* entry)
{
    std::size_t hole = Probe(GetHash(TPolicy::GetKey(*entry)),
                             [&](const CSlot& slot) { return slot.entry == entry; });
    if (m_slots[hole].entry == nullptr)
        return false;
    for (std::size_t slot = (hole + 1) & GetMask(); m_slots[slot].entry != nullptr;
         slot = (slot + 1) & GetMask()) {
        const bool startsAtHoleOrBefore =
            GetDistance(m_slots[slot].hash, slot) >= GetDistance(hole, slot);
        if (startsAtHoleOrBefore) {
            m_slots[hole] = m_slots[slot];
            hole = slot;
        }
    }
    m_slots[hole] = {};
    --m_count;
    return true;
}

template <class TEntry, class TPolicy>
void TKvHashTable<TEntry, TPolicy>::Clear()
{
    m_slots.assign(m_slots.size(), {});
    m_count = 0;
}

template <class TEntry, class TPolicy>
void TKvHashTable<TEntry, TPolicy>::Grow()
{
    std::vector<CSlot> old(m_slots.size() * 2);
    old.swap(m_slots);
    for (const CSlot& slot : old) {
        if (slot.entry != nullptr)
            m_slots[Probe(slot.hash, [](const CSlot&) { return false; })] = slot;
    }
}
