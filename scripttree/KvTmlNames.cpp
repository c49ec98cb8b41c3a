#include "scripttree/KvTmlNames.h"

namespace {

constexpr std::size_t kFirstSlotCount = 64;

}  // namespace

CKvTmlNames::CKvTmlNames(const CKvArray<CKvIdentifier>& used) : m_slots(kFirstSlotCount)
{
    for (const CKvIdentifier& name : used)
        Add(name);
}

void CKvTmlNames::Append(const CKvIdentifier& name, std::uint32_t& slot)
{
    m_names.Add(name);
    slot = static_cast<std::uint32_t>(m_names.GetCount());
    if (2 * static_cast<std::size_t>(slot) > m_slots.size())
        Grow();
}

void CKvTmlNames::Grow()
{
    m_slots = std::vector<std::uint32_t>(2 * m_slots.size());
    std::uint32_t number = 0;
    for (const CKvIdentifier& name : m_names)
        FindSlot(name) = ++number;
}
