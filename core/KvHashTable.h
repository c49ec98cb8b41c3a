// The open-addressing hash table of the library: slots of pointers to entries, linear probing,
// never more than a quarter full when an entry is placed. The caller owns the entries.

#pragma once

#include <cstddef>
#include <vector>

/// TPolicy supplies, as static members: `Key`, `GetKey(const TEntry&)`, `MatchKey(const TEntry&,
/// key)` and `CreateHash(key)`, a signed int whose low bits choose the start slot.
template <class TEntry, class TPolicy>
class TKvHashTable
{
public:
    using Key = typename TPolicy::Key;

    TKvHashTable() : m_slots(std::size_t{1} << m_log2, nullptr) {}

    int GetCount() const { return m_count; }
    int GetSlotCount() const { return static_cast<int>(m_slots.size()); }

    /// The entry in one slot, or null; slots are numbered from 0 to GetSlotCount() - 1.
    TEntry* GetSlot(int slot) const { return m_slots[static_cast<std::size_t>(slot)]; }

    /// The entry with this key, or null.
    TEntry* Find(const Key& key) const;

    /// Places an entry; the table grows first when it is a quarter full.
    ///
    /// Ownership: the entry stays the caller's and must outlive the table.
    /// Errors:    false when another entry has the same key; the table is unchanged.
    bool Insert(TEntry* entry);

private:
    std::size_t StartSlot(const Key& key) const
    {
        return static_cast<unsigned int>(TPolicy::CreateHash(key)) & (m_slots.size() - 1);
    }
    bool Place(TEntry* entry);
    void Grow();

    int m_log2 = 8;
    int m_count = 0;
    std::vector<TEntry*> m_slots;
};

// ------------------------------------------------------------------------------------------------

template <class TEntry, class TPolicy>
TEntry* TKvHashTable<TEntry, TPolicy>::Find(const Key& key) const
{
    for (std::size_t slot = StartSlot(key); m_slots[slot] != nullptr;
         slot = (slot + 1) & (m_slots.size() - 1)) {
        if (TPolicy::MatchKey(*m_slots[slot], key))
            return m_slots[slot];
    }
    return nullptr;
}

template <class TEntry, class TPolicy>
bool TKvHashTable<TEntry, TPolicy>::Insert(TEntry* entry)
{
    if (static_cast<std::size_t>(m_count) * 4 >= m_slots.size())
        Grow();
    return Place(entry);
}

template <class TEntry, class TPolicy>
bool TKvHashTable<TEntry, TPolicy>::Place(TEntry* entry)
{
    const auto& key = TPolicy::GetKey(*entry);
    std::size_t slot = StartSlot(key);
    while (m_slots[slot] != nullptr) {
        if (TPolicy::MatchKey(*m_slots[slot], key))
            return m_slots[slot] == entry;
        slot = (slot + 1) & (m_slots.size() - 1);
    }
    m_slots[slot] = entry;
    ++m_count;
    return true;
}

template <class TEntry, class TPolicy>
void TKvHashTable<TEntry, TPolicy>::Grow()
{
    std::vector<TEntry*> old(std::size_t{2} << m_log2, nullptr);
    old.swap(m_slots);
    ++m_log2;
    m_count = 0;
    for (TEntry* entry : old) {
        if (entry != nullptr)
            Place(entry);
    }
}
