#include "resource/KvPooledObjectManagerManager.h"

#include <climits>
#include <cstdio>

#include "core/KvCrc64.h"
#include "core/KvEntryAt.h"
#include "core/KvId.h"
#include "core/KvText.h"
#include "resource/KvPooledObjectManager.h"

namespace {

std::uint64_t AppendToCrc(std::uint64_t crc, const char* text)
{
    return CreateCrc64_ToLower(text, static_cast<unsigned int>(kvStrlen(text)), crc);
}

}  // namespace

CKvPooledObjectManagerManager::CKvPooledObjectManagerManager()
    : m_topPoolIdentifier(KVID::GetSingleton().global)
{
}

CKvPooledObjectManagerManager& CKvPooledObjectManagerManager::GetInstance()
{
    static auto* const s_instance = new CKvPooledObjectManagerManager;
    return *s_instance;
}

void CKvPooledObjectManagerManager::AddManager(CKvPooledObjectManager* manager)
{
    if (manager != nullptr)
        m_managers.Add(manager);
}

bool CKvPooledObjectManagerManager::RemoveManager(CKvPooledObjectManager* manager)
{
    for (int i = 0; i < m_managers.GetCount(); ++i) {
        if (m_managers[i] == manager) {
            m_managers.RemoveAt(i);
            return true;
        }
    }
    return false;
}

void CKvPooledObjectManagerManager::DestroyManager(CKvPooledObjectManager* manager)
{
    if (manager == nullptr)
        return;
    RemoveManager(manager);
    manager->Release();
}

CKvPooledObjectManager* CKvPooledObjectManagerManager::GetManager(int index) const
{
    return KvEntryAt(m_managers, index);
}

CKvPooledObjectManager* CKvPooledObjectManagerManager::FindManager(
    const CKvIdentifier& identifier) const
{
    for (CKvPooledObjectManager* manager : m_managers) {
        if (manager->GetIdentifier() == identifier)
            return manager;
    }
    return nullptr;
}

CKvPooledObjectManager* CKvPooledObjectManagerManager::FindManagerByObjectType(
    const CKvIdentifier& type) const
{
    for (CKvPooledObjectManager* manager : m_managers) {
        if (manager->GetObjectTypeIdentifier() == type)
            return manager;
    }
    return nullptr;
}

CKvManaged* CKvPooledObjectManagerManager::FindObject(const CKvIdentifier& pool,
                                                      const CKvIdentifier& object) const
{
    for (const CKvPooledObjectManager* manager : m_managers) {
        if (CKvManaged* found = manager->FindObject(pool, object))
            return found;
    }
    return nullptr;
}

CKvIdentifier CKvPooledObjectManagerManager::GenerateIdentifierSuffix(
    const CKvIdentifier& base) const
{
    const TKvString<char> stem = base.DebugString() + "_";
    const std::uint64_t stemCrc = AppendToCrc(kKvCrc64Initial, stem.GetText());
    for (unsigned int n = 1; n <= INT_MAX; ++n) {
        char number[16];
        std::snprintf(number, sizeof number, "%03u", n);
        if (FindObject(m_topPoolIdentifier, CKvIdentifier(AppendToCrc(stemCrc, number))) == nullptr)
            return CKvIdentifier(stem + number);
    }
    return {};
}

void CKvPooledObjectManagerManager::SaveVariables()
{
    for (int i = 0; i < GetManagerCount(); ++i)
        m_managers[i]->SaveVariables();
}

void CKvPooledObjectManagerManager::ResetVariables()
{
    for (int i = 0; i < GetManagerCount(); ++i)
        m_managers[i]->ResetVariables();
}

CKvArray<CKvIdentifier> CKvPooledObjectManagerManager::GetAllObjectIdentifierArray() const
{
    CKvArray<CKvIdentifier> all;
    for (const CKvPooledObjectManager* manager : m_managers) {
        for (const CKvIdentifier& identifier : manager->GetObjectIdentifierArray())
            all.Add(identifier);
    }
    return all;
}
