// The register of all resource managers, which finds resources across kinds, and the stack of
// resource pools. A pool records what is loaded while it is on top, for a level or a menu;
// releasing it unloads that again, newest first. The resources themselves stay with their managers.

#pragma once

#include <memory>

#include "core/KvArray.h"
#include "core/KvIdentifier.h"

class CKvResource;
class CKvVoidResourceManager;

/// Fields stand in the documented order.
///
/// A program calls Initialize() before its first load and Shutdown() at its end. While the stack is
/// empty resources load all the same, but no pool records them.
///
/// Ownership: the pools are owned; managers are not, one that ends takes itself out.
class CKvResourceManagerManager
{
public:
    /// The one instance, made on the first call and never destroyed.
    static CKvResourceManagerManager& GetInstance();

    CKvResourceManagerManager(const CKvResourceManagerManager&) = delete;
    CKvResourceManagerManager& operator=(const CKvResourceManagerManager&) = delete;

    /// Pushes the base pool, whose identifier is null.
    void Initialize();

    /// Releases all pools, the top one first.
    void Shutdown();

    /// Whether the stack is empty.
    bool IsShutdown() const { return m_top == nullptr; }

    /// Pushes a pool. The pool of new run-time objects stays; see
    /// CKvPooledObjectManagerManager::SetTopPoolIdentifier().
    void CreateNewResourcePoolOnStack(const CKvIdentifier& identifier);

    /// Pops the top pool and unloads what it recorded, newest first, so that it can be loaded
    /// again, what failed included. The pool that is on top then also gives the pool of new
    /// run-time objects its name, the base pool the null identifier. What a resource loads while
    /// it is unloaded is recorded in the pool that is on top then. Does nothing when the stack is
    /// empty.
    ///
    /// A resource is recorded when its Load() is done: what it loaded itself is older and goes
    /// after it.
    void ReleaseResourcePoolAtTopOfStack();

    /// Marks the top pool, which changes nothing in what it does.
    void DisableCurrentResourcePool();

    /// Null when the stack is empty.
    CKvIdentifier GetTopResourcePoolId() const;

    /// Appends a manager. Null, and one that is listed already, change nothing.
    void AddManager(CKvVoidResourceManager* manager);

    int GetManagerCount() const { return m_managers.GetCount(); }

    /// The manager at an index, null when it is out of range.
    CKvVoidResourceManager* GetManager(int index) const;

    /// The first manager of this kind, or null.
    CKvVoidResourceManager* FindManager(const CKvIdentifier& identifier) const;

    /// Replaces the array's contents by the identifiers of all managers.
    void GetManagerTypeIdentifierArray(CKvArray<CKvIdentifier>& identifiers) const;

    /// What the first manager gives that has such a resource, loaded or not, or null.
    CKvResource* FindResource(const CKvIdentifier& identifier) const;

    /// What the first manager gives that has such a resource, loaded on demand. A manager that
    /// cannot open the file is passed over at the call that tries. Null when no manager gives one.
    CKvResource* FindAndLoadResource(const CKvIdentifier& identifier) const;

    /// Logs all pools from the top down with the resources that each has recorded, newest first.
    void Report() const;

private:
    friend class CKvVoidResourceManager;

    /// Fields stand in the documented order.
    struct CPool
    {
        CKvResource* firstResource = nullptr;
        std::unique_ptr<CPool> below;
        CKvIdentifier identifier;
        bool isEnabled = true;
    };

    CKvResourceManagerManager();
    ~CKvResourceManagerManager() { Shutdown(); }

    /// Records a resource as the newest of the top pool, in place of the pool that has it.
    void AddLoadedResourceToCurrentStack(CKvResource* resource);
    void RemoveManager(const CKvVoidResourceManager* manager);

    std::unique_ptr<CPool> m_top;
    CKvArray<CKvVoidResourceManager*> m_managers;
};
