// The register of all managers of pooled objects: finds objects across kinds, makes unique names,
// saves and resets the fields of everything.

#pragma once

#include "core/KvArray.h"
#include "core/KvIdentifier.h"

class CKvManaged;
class CKvPooledObjectManager;

/// Fields stand in the documented order.
///
/// Ownership: managers are not owned; one that ends takes itself out.
class CKvPooledObjectManagerManager
{
public:
    /// The one instance, made on the first call and never destroyed.
    static CKvPooledObjectManagerManager& GetInstance();

    CKvPooledObjectManagerManager(const CKvPooledObjectManagerManager&) = delete;
    CKvPooledObjectManagerManager& operator=(const CKvPooledObjectManagerManager&) = delete;
    virtual ~CKvPooledObjectManagerManager() = default;

    /// Appends a manager; one that is added twice is listed twice. Null is ignored.
    void AddManager(CKvPooledObjectManager* manager);

    /// Takes the first occurrence out.
    ///
    /// Errors: false when there is none.
    bool RemoveManager(CKvPooledObjectManager* manager);

    /// Takes the first occurrence out and calls the manager's Release(). It is not deleted.
    void DestroyManager(CKvPooledObjectManager* manager);

    /// Empties the list; no manager is released.
    void Release() { m_managers.Clear(); }

    int GetManagerCount() const { return m_managers.GetCount(); }

    /// Errors: an index out of range asserts; null in a release build.
    CKvPooledObjectManager* GetManager(int index) const;

    /// The first manager of this name, or null.
    CKvPooledObjectManager* FindManager(const CKvIdentifier& identifier) const;

    /// The first manager that handles objects of this type, or null.
    CKvPooledObjectManager* FindManagerByObjectType(const CKvIdentifier& type) const;

    /// What the first manager gives that has such an object, or null.
    CKvManaged* FindObject(const CKvIdentifier& pool, const CKvIdentifier& object) const;

    /// A name that no object of the top pool has: the text of \a base, "_" and the first free
    /// number of "001", "002" and so on, with more digits from 1000 on. Its text is registered,
    /// that of names that were taken is not.
    ///
    /// Errors: null when all numbers up to INT_MAX are taken.
    /// Cost:   one look-up a number and manager.
    CKvIdentifier GenerateIdentifierSuffix(const CKvIdentifier& base) const;

    // For every manager, in the order of the list.
    void SaveVariables();
    void ResetVariables();

    /// What the managers' GetObjectIdentifierArray() give, one after the other.
    CKvArray<CKvIdentifier> GetAllObjectIdentifierArray() const;

    /// The pool in which new names are unique: that of the level or screen that runs. "global" at
    /// first. Whoever pushes a resource pool sets it; popping one sets it to the pool below.
    CKvIdentifier GetTopPoolIdentifier() const { return m_topPoolIdentifier; }
    void SetTopPoolIdentifier(const CKvIdentifier& pool) { m_topPoolIdentifier = pool; }

private:
    CKvPooledObjectManagerManager();

    CKvArray<CKvPooledObjectManager*> m_managers;
    CKvIdentifier m_topPoolIdentifier;
};
