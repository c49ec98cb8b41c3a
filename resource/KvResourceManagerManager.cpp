#include "resource/KvResourceManagerManager.h"

#include <utility>

#include "core/KvId.h"
#include "core/KvLog.h"
#include "resource/KvPooledObjectManagerManager.h"
#include "resource/KvResource.h"
#include "resource/KvVoidResourceManager.h"

namespace {

void LogPool(const char* event, const CKvIdentifier& pool)
{
    KvLog(ELogLevel::Info, ELogType::Resource, 0, "%s pool '%s'", event,
          pool.DebugString().GetText());
}

}  // namespace

CKvResourceManagerManager::CKvResourceManagerManager()
{
    KVID::GetSingleton();  // gives the base pool's null identifier its text
}

CKvResourceManagerManager& CKvResourceManagerManager::GetInstance()
{
    static auto* const s_instance = new CKvResourceManagerManager;
    return *s_instance;
}

void CKvResourceManagerManager::Initialize()
{
    CreateNewResourcePoolOnStack(KVID::GetSingleton().null);
}

void CKvResourceManagerManager::Shutdown()
{
    while (!IsShutdown())
        ReleaseResourcePoolAtTopOfStack();
}

void CKvResourceManagerManager::CreateNewResourcePoolOnStack(const CKvIdentifier& identifier)
{
    auto pool = std::make_unique<CPool>();
    pool->identifier = identifier;
    pool->below = std::move(m_top);
    m_top = std::move(pool);
    LogPool("[+] Create", identifier);
}

void CKvResourceManagerManager::ReleaseResourcePoolAtTopOfStack()
{
    if (m_top == nullptr)
        return;
    std::unique_ptr<CPool> pool = std::exchange(m_top, nullptr);
    m_top = std::move(pool->below);
    const CKvIdentifier identifier = pool->identifier;
    LogPool("[-] Begin release", identifier);
    // Looks at the head anew each time: what a resource does while it unloads may destroy others.
    while (CKvResource* resource = pool->firstResource) {
        resource->UnlinkFromPool();
        resource->Release();
    }
    pool.reset();
    if (m_top != nullptr)
        CKvPooledObjectManagerManager::GetInstance().SetTopPoolIdentifier(m_top->identifier);
    LogPool("[-] End release", identifier);
}

void CKvResourceManagerManager::DisableCurrentResourcePool()
{
    if (m_top != nullptr)
        m_top->isEnabled = false;
}

CKvIdentifier CKvResourceManagerManager::GetTopResourcePoolId() const
{
    return m_top != nullptr ? m_top->identifier : CKvIdentifier();
}

void CKvResourceManagerManager::AddManager(CKvVoidResourceManager* manager)
{
    if (manager == nullptr)
        return;
    for (const CKvVoidResourceManager* listed : m_managers) {
        if (listed == manager)
            return;
    }
    m_managers.Add(manager);
}

CKvVoidResourceManager* CKvResourceManagerManager::GetManager(int index) const
{
    return index >= 0 && index < GetManagerCount() ? m_managers[index] : nullptr;
}

CKvVoidResourceManager* CKvResourceManagerManager::FindManager(
    const CKvIdentifier& identifier) const
{
    for (CKvVoidResourceManager* manager : m_managers) {
        if (manager->GetIdentifier() == identifier)
            return manager;
    }
    return nullptr;
}

void CKvResourceManagerManager::GetManagerTypeIdentifierArray(
    CKvArray<CKvIdentifier>& identifiers) const
{
    identifiers.Clear();
    for (const CKvVoidResourceManager* manager : m_managers)
        identifiers.Add(manager->GetIdentifier());
}

CKvResource* CKvResourceManagerManager::FindResource(const CKvIdentifier& identifier) const
{
    for (const CKvVoidResourceManager* manager : m_managers) {
        if (CKvResource* found = manager->FindExistVoidObject(identifier))
            return found;
    }
    return nullptr;
}

CKvResource* CKvResourceManagerManager::FindAndLoadResource(const CKvIdentifier& identifier) const
{
    // By index, since what is loaded may bring its own managers.
    for (int i = 0; i < GetManagerCount(); ++i) {
        if (CKvResource* found = m_managers[i]->FindVoidObject(identifier))
            return found;
    }
    return nullptr;
}

void CKvResourceManagerManager::Report() const
{
    for (const CPool* pool = m_top.get(); pool != nullptr; pool = pool->below.get()) {
        KvLog(ELogLevel::Info, ELogType::Identifier, 0, "Resource pool '%s'",
              pool->identifier.DebugString().GetText());
        for (const CKvResource* resource = pool->firstResource; resource != nullptr;
             resource = resource->m_nextInPool) {
            KvLog(ELogLevel::Info, ELogType::Identifier, 1, "%s",
                  resource->GetIdentifier().DebugString().GetText());
        }
    }
}

void CKvResourceManagerManager::AddLoadedResourceToCurrentStack(CKvResource* resource)
{
    if (m_top != nullptr)
        resource->LinkIntoPool(m_top->firstResource);
}

void CKvResourceManagerManager::RemoveManager(const CKvVoidResourceManager* manager)
{
    for (int i = 0; i < GetManagerCount(); ++i) {
        if (m_managers[i] == manager) {
            m_managers.RemoveAt(i);
            return;
        }
    }
}
