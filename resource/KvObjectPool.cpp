#include "resource/KvObjectPool.h"

#include <algorithm>
#include <cstdint>

#include "core/KvEntryAt.h"

/// One release or deletion under way; nested ones form a list on the stack.
class CKvObjectPool::CWork
{
public:
    CWork(CKvObjectPool& pool, const CKvManaged* object)
        : m_pool(pool), m_object(object), m_outer(pool.m_work)
    {
        pool.m_work = this;
    }
    CWork(const CWork&) = delete;
    CWork& operator=(const CWork&) = delete;
    ~CWork() { m_pool.m_work = m_outer; }

    static bool IsOn(const CKvObjectPool& pool, const CKvManaged* object)
    {
        const CWork* work = pool.m_work;
        while (work != nullptr && work->m_object != object)
            work = work->m_outer;
        return work != nullptr;
    }

private:
    CKvObjectPool& m_pool;
    const CKvManaged* m_object;
    const CWork* m_outer;
};

int CKvObjectPool::CAddressPolicy::CreateHash(Key key)
{
    return static_cast<int>(KvSaltedHash(reinterpret_cast<std::uintptr_t>(key)));
}

CKvManaged* CKvObjectPool::GetObject(int index) const
{
    return KvEntryAt(m_objects, index);
}

CKvManaged* CKvObjectPool::FindObject(const CKvIdentifier& identifier) const
{
    return m_table.Find(identifier);
}

bool CKvObjectPool::Contains(const CKvManaged* object) const
{
    return object != nullptr &&
           (m_table.Find(object->GetIdentifier()) == object || m_unfindable.Find(object) == object);
}

bool CKvObjectPool::AddObject(CKvManaged* object)
{
    if (object == nullptr || Contains(object))
        return false;
    m_objects.Add(object);
    try {
        Index(object);
    } catch (...) {
        m_objects.RemoveLast();  // the object is still the caller's
        throw;
    }
    return true;
}

bool CKvObjectPool::RemoveObject(CKvManaged* object)
{
    const int index = GetIndex(object);
    if (index < 0)
        return false;
    m_objects.RemoveAt(index);
    if (index < m_releasedCount)
        --m_releasedCount;
    RemoveFromIndex(object);
    return true;
}

bool CKvObjectPool::RenameObject(CKvManaged* object, const CKvIdentifier& identifier)
{
    if (!Contains(object) && GetIndex(object) < 0)
        return false;
    RemoveFromIndex(object);
    object->SetIdentifier(identifier);
    Index(object);
    return true;
}

void CKvObjectPool::DestroyObject(CKvManaged*& object)
{
    CKvManaged* const doomed = object;
    if (doomed == nullptr || CWork::IsOn(*this, doomed))
        return;
    const CWork work(*this, doomed);
    const int index = m_releasedCount > 0 ? GetIndex(doomed) : -1;
    const bool isReleased = index >= 0 && index < m_releasedCount;
    if (!isReleased)
        doomed->Release();
    RemoveObject(doomed);
    object = nullptr;  // may be a field of the object itself
    delete doomed;
}

void CKvObjectPool::DestroyObjects()
{
    if (IsBusy())
        return;
    while (m_releasedCount < m_objects.GetCount()) {
        CKvManaged* const object = m_objects[m_releasedCount++];
        const CWork work(*this, object);
        object->Release();
    }
    // From the end, so that the list holds what still stands and nothing else.
    std::reverse(m_objects.begin(), m_objects.end());
    while (!m_objects.IsEmpty()) {
        CKvManaged* last = m_objects[m_objects.GetCount() - 1];
        DestroyObject(last);
    }
}

// From the end, where the latest objects are, and the last one at once.
int CKvObjectPool::GetIndex(const CKvManaged* object) const
{
    int index = m_objects.GetCount() - 1;
    while (index >= 0 && m_objects[index] != object)
        --index;
    return index;
}

void CKvObjectPool::Index(CKvManaged* object)
{
    if (!m_table.Insert(object))
        m_unfindable.Insert(object);
}

void CKvObjectPool::RemoveFromIndex(CKvManaged* object)
{
    if (m_table.Remove(object) || m_unfindable.Remove(object))
        return;
    // Its name was changed behind the pool's back, so that its slot is not found: nothing may be
    // left there that will dangle.
    m_table.Clear();
    m_unfindable.Clear();
    for (CKvManaged* other : m_objects) {
        if (other != object)
            Index(other);
    }
}
