#include "resource/KvPooledObjectManager.h"

#include <utility>

#include "core/KvEntryAt.h"
#include "core/KvId.h"
#include "core/KvIdentifierManager.h"
#include "resource/KvPooledObjectManagerManager.h"

namespace {

const CKvIdentifier& GlobalPool()
{
    return KVID::GetSingleton().global;
}

/// Objects whose name begins with "@" are the editor's own. Looked up quietly, as not every name
/// has its text registered.
bool IsEditorName(const CKvIdentifier& identifier)
{
    const char* text = CKvIdentifierManager::GetInstance().FindNameForCrc64(identifier.GetCrc64());
    return text != nullptr && *text == '@';
}

}  // namespace

CKvPooledObjectManager::~CKvPooledObjectManager()
{
    // Leaves first: objects that go may ask the registry, which calls what is pure by now.
    while (CKvPooledObjectManagerManager::GetInstance().RemoveManager(this)) {
    }
    DestroyAllPools();
}

void CKvPooledObjectManager::AddObject(const CKvIdentifier& pool, CKvManaged* object)
{
    if (object != nullptr)
        GetOrCreatePool(pool)->AddObject(object);
}

void CKvPooledObjectManager::Initialize()
{
    OnInitialize();
    AppendPool(GlobalPool());
    CKvPooledObjectManagerManager::GetInstance().AddManager(this);
    OnInitialized();
}

void CKvPooledObjectManager::Release()
{
    OnRelease();
    DestroyAllPools();
    CKvPooledObjectManagerManager::GetInstance().RemoveManager(this);
    OnReleased();
}

CKvObjectPool* CKvPooledObjectManager::GetPool(int pool) const
{
    return KvEntryAt(m_pools, pool);
}

int CKvPooledObjectManager::GetObjectCount(int pool) const
{
    const CKvObjectPool* found = GetPool(pool);
    return found != nullptr ? found->GetObjectCount() : 0;
}

CKvManaged* CKvPooledObjectManager::GetObject(int pool, int index) const
{
    const CKvObjectPool* found = GetPool(pool);
    return found != nullptr ? found->GetObject(index) : nullptr;
}

CKvObjectPool* CKvPooledObjectManager::FindPool(const CKvIdentifier& pool) const
{
    const int index = FindPoolIndex(pool);
    return index >= 0 ? m_pools[index].get() : nullptr;
}

int CKvPooledObjectManager::FindPoolIndex(const CKvIdentifier& pool) const
{
    for (int i = 0; i < m_pools.GetCount(); ++i) {
        if (m_pools[i]->GetIdentifier() == pool)
            return i;
    }
    return -1;
}

CKvManaged* CKvPooledObjectManager::FindObject(const CKvIdentifier& pool,
                                               const CKvIdentifier& object) const
{
    const CKvObjectPool* found = FindPool(pool);
    return found != nullptr ? found->FindObject(object) : nullptr;
}

bool CKvPooledObjectManager::ObjectAlreadyExists(const CKvManaged* object) const
{
    const CKvObjectPool* pool = FindPoolOf(object);
    return pool != nullptr && pool->Contains(object);
}

void CKvPooledObjectManager::RemoveObject(CKvManaged* object)
{
    if (CKvObjectPool* pool = FindPoolOf(object))
        pool->RemoveObject(object);
}

void CKvPooledObjectManager::DestroyObject(CKvManaged*& object)
{
    if (object == nullptr)
        return;
    CKvObjectPool* pool = FindPoolOf(object);
    if (pool == nullptr) {
        object->Release();
        return;
    }
    // No pool keeps a deleted object, be it another one than the object says.
    for (int i = 0; i < m_pools.GetCount() && !pool->Contains(object); ++i) {
        if (m_pools[i]->Contains(object))
            pool = m_pools[i].get();
    }
    pool->DestroyObject(object);
}

void CKvPooledObjectManager::RenameObject(CKvManaged*& object, const CKvIdentifier& identifier)
{
    if (CKvObjectPool* pool = FindPoolOf(object))
        pool->RenameObject(object, identifier);
}

void CKvPooledObjectManager::Clear()
{
    DestroyAllPools();
    GetOrCreatePool(GlobalPool());
}

void CKvPooledObjectManager::Clear(const CKvIdentifier& pool)
{
    const bool isGlobal = pool == GlobalPool();
    DestroyPool(pool);
    if (isGlobal)
        GetOrCreatePool(GlobalPool());
}

void CKvPooledObjectManager::SaveVariables()
{
    ForEachObject([](CKvManaged& object) {
        if (!IsEditorName(object.GetIdentifier()))
            object.SaveVariables();
    });
}

void CKvPooledObjectManager::ResetVariables()
{
    ForEachObject([](CKvManaged& object) { object.ResetVariables(); });
}

CKvArray<TKvString<char>> CKvPooledObjectManager::GetObjectNameArray() const
{
    CKvArray<TKvString<char>> names;
    for (int i = 0; GetPoolCount() > 0 && i < GetObjectCount(0); ++i) {
        const CKvIdentifier identifier = GetObject(0, i)->GetIdentifier();
        if (!IsEditorName(identifier))
            names.Add(identifier.DebugString());
    }
    return names;
}

CKvArray<CKvIdentifier> CKvPooledObjectManager::GetObjectIdentifierArray() const
{
    CKvArray<CKvIdentifier> identifiers;
    for (int i = 0; GetPoolCount() > 0 && i < GetObjectCount(0); ++i) {
        const CKvIdentifier identifier = GetObject(0, i)->GetIdentifier();
        if (!identifier.IsNull() && !IsEditorName(identifier))
            identifiers.Add(identifier);
    }
    return identifiers;
}

void CKvPooledObjectManager::DestroyPool(const CKvIdentifier& pool)
{
    CKvObjectPool* const doomed = FindPool(pool);
    if (doomed == nullptr || doomed->IsBusy())
        return;
    doomed->DestroyObjects();
    // Its objects may have called back: it can stand elsewhere by now.
    for (int i = 0; i < m_pools.GetCount(); ++i) {
        if (m_pools[i].get() == doomed) {
            m_pools.RemoveAt(i);
            return;
        }
    }
}

void CKvPooledObjectManager::DestroyAllPools()
{
    // Objects that go may fill pools that are empty already.
    bool isEmpty = false;
    while (!isEmpty) {
        isEmpty = true;
        for (int i = 0; i < m_pools.GetCount(); ++i) {
            if (m_pools[i]->GetObjectCount() > 0 && !m_pools[i]->IsBusy()) {
                m_pools[i]->DestroyObjects();
                isEmpty = false;
            }
        }
    }
    CKvArray<std::unique_ptr<CKvObjectPool>> busy;
    for (std::unique_ptr<CKvObjectPool>& pool : m_pools) {
        if (pool->IsBusy())
            busy.Add(std::move(pool));
    }
    m_pools = std::move(busy);
}

CKvObjectPool* CKvPooledObjectManager::GetOrCreatePool(const CKvIdentifier& pool)
{
    CKvObjectPool* const found = FindPool(pool);
    return found != nullptr ? found : AppendPool(pool);
}

CKvObjectPool* CKvPooledObjectManager::FindPoolOf(const CKvManaged* object) const
{
    return object != nullptr ? FindPool(object->GetPoolIdentifier()) : nullptr;
}

CKvObjectPool* CKvPooledObjectManager::AppendPool(const CKvIdentifier& pool)
{
    m_pools.Add(std::make_unique<CKvObjectPool>(pool));
    return m_pools[m_pools.GetCount() - 1].get();
}

template <class TOperation>
void CKvPooledObjectManager::ForEachObject(TOperation operation) const
{
    for (int pool = 0; pool < GetPoolCount(); ++pool) {
        for (int i = 0; i < GetObjectCount(pool); ++i)
            operation(*GetObject(pool, i));
    }
}
