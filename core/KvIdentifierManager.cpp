#include "core/KvIdentifierManager.h"

#include <vector>

#include "core/KvCrc64.h"
#include "core/KvHashTable.h"
#include "core/KvSaltedHash.h"
#include "core/KvText.h"

/// Entries in the order of their registration, which fixes their order in a hash file.
class CKvIdentifierManager::CTable
{
public:
    using Entry = CKvIdentifierHashEntry;

    const Entry* Find(std::uint64_t crc) const { return m_index.Find(crc); }

    /// Either all of it happens or, when memory is short, nothing.
    const Entry& Add(std::unique_ptr<Entry> entry)
    {
        if (m_entries.size() == m_entries.capacity())
            m_entries.reserve(2 * m_entries.size() + 1);
        m_index.Insert(entry.get());
        m_entries.push_back(std::move(entry));
        return *m_entries.back();
    }

    /// An insertion that a known CRC refuses makes the documented table grow all the same.
    void NoteRefusedInsertion() { m_refusedAt = m_entries.size(); }
    bool HasGrownAhead() const { return m_refusedAt == m_entries.size(); }

    const std::vector<std::unique_ptr<Entry>>& Entries() const { return m_entries; }

private:
    std::vector<std::unique_ptr<Entry>> m_entries;

    /// Under the documented hash, names chosen to share its bits would make probing quadratic.
    TKvHashTable<Entry, TKvSaltedPolicy<CKvIdentifierHashPolicy>> m_index;
    std::size_t m_refusedAt = 0;
};

CKvIdentifierManager& CKvIdentifierManager::GetInstance()
{
    static auto* const s_instance = new CKvIdentifierManager;
    return *s_instance;
}

CKvIdentifierManager::CKvIdentifierManager() = default;
CKvIdentifierManager::~CKvIdentifierManager() = default;

void CKvIdentifierManager::Release()
{
    m_table.reset();
}

CKvIdentifierManager::CTable& CKvIdentifierManager::Table()
{
    if (m_table == nullptr)
        m_table = std::make_unique<CTable>();
    return *m_table;
}

const char* CKvIdentifierManager::FindNameForCrc64(std::uint64_t crc)
{
    const CKvIdentifierHashEntry* entry = Table().Find(crc);
    return entry != nullptr ? entry->name.GetText() : nullptr;
}

void CKvIdentifierManager::CheckCrc64ForUniqueness(const char* text, bool)
{
    const auto length = static_cast<unsigned int>(kvStrlen(text));
    Register(CreateCrc64_ToLower(text, length, kKvCrc64Initial), text, length);
}

const char* CKvIdentifierManager::Register(std::uint64_t crc, const char* text, unsigned int length)
{
    CTable& table = Table();
    if (const CKvIdentifierHashEntry* known = table.Find(crc))
        return known->name.GetText();
    auto entry = std::make_unique<CKvIdentifierHashEntry>();
    entry->crc = crc;
    entry->name = TKvString<char>(text, static_cast<int>(length));
    entry->name.ToLower();
    return table.Add(std::move(entry)).name.GetText();
}

bool CKvIdentifierManager::Insert(const CKvIdentifierHashEntry& entry)
{
    CTable& table = Table();
    if (table.Find(entry.crc) != nullptr) {
        table.NoteRefusedInsertion();
        return false;
    }
    table.Add(std::make_unique<CKvIdentifierHashEntry>(entry));
    return true;
}

void CKvIdentifierManager::ListInSlotOrder(CKvArray<const CKvIdentifierHashEntry*>& entries)
{
    TKvHashTable<const CKvIdentifierHashEntry, CKvIdentifierHashPolicy> layout;
    for (const auto& entry : Table().Entries())
        layout.Insert(entry.get());
    if (Table().HasGrownAhead() && !Table().Entries().empty())
        layout.Insert(Table().Entries().back().get());  // is there already, but lets the table grow
    for (int slot = 0; slot < layout.GetSlotCount(); ++slot) {
        if (layout.GetSlot(slot) != nullptr)
            entries.Add(layout.GetSlot(slot));
    }
}
