// The manager of one kind of managed objects: it owns them in named pools and finds, renames,
// removes and destroys them by pool and name.

#pragma once

#include <memory>

#include "core/KvArray.h"
#include "core/KvIdentifier.h"
#include "core/KvString.h"
#include "resource/KvObjectPool.h"

class CKvManaged;

/// Virtual functions and fields stand in the documented order.
///
/// An operation on one object goes to the pool that the object's GetPoolIdentifier() names, so that
/// is the pool to add it to. Objects may call back from their Release() and from their destructor;
/// a pool that is busy with them is passed over by what destroys pools.
///
/// Ownership: the manager owns its pools and they their objects. It does not copy.
/// Errors:    null objects, unknown pools and unknown objects change nothing.
class CKvPooledObjectManager
{
public:
    explicit CKvPooledObjectManager(const CKvIdentifier& identifier) : m_identifier(identifier) {}
    CKvPooledObjectManager(const CKvPooledObjectManager&) = delete;
    CKvPooledObjectManager& operator=(const CKvPooledObjectManager&) = delete;

    /// Leaves the registry, however often it is listed there, and destroys all pools. For a manager
    /// that was not released; the hooks are not called any more.
    virtual ~CKvPooledObjectManager();

protected:
    // Hooks; they do nothing here.
    virtual void OnInitialize() {}   // before Initialize() does anything
    virtual void OnInitialized() {}  // when it is done
    virtual void OnRelease() {}      // before Release() does anything
    virtual void OnReleased() {}     // when it is done

public:
    /// What the names of this kind of objects begin with.
    virtual TKvString<char> GetNamePrefix() const { return {}; }

    /// The type of the objects that the manager handles.
    virtual CKvIdentifier GetObjectTypeIdentifier() const = 0;

    /// The kind's name as messages and editors show it. The library does not call it.
    virtual const char* GetTypeName() const = 0;

    /// Appends an object to a pool, which is made when it is missing.
    ///
    /// Ownership: the object is the pool's from here on.
    /// Errors:    an object that the pool holds already stays there once.
    virtual void AddObject(const CKvIdentifier& pool, CKvManaged* object);

    CKvIdentifier GetIdentifier() const { return m_identifier; }

    /// Makes the pool "global" and enters the registry.
    void Initialize();

    /// Destroys all pools and leaves the registry.
    void Release();

    // Indices out of range assert; in a release build they give null or 0.
    int GetPoolCount() const { return m_pools.GetCount(); }
    CKvObjectPool* GetPool(int pool) const;
    int GetObjectCount(int pool) const;
    CKvManaged* GetObject(int pool, int index) const;

    /// The first pool of this name, or null.
    CKvObjectPool* FindPool(const CKvIdentifier& pool) const;

    /// The index of the first pool of this name, or -1.
    int FindPoolIndex(const CKvIdentifier& pool) const;

    /// The object of this name in the first pool of that name, or null.
    CKvManaged* FindObject(const CKvIdentifier& pool, const CKvIdentifier& object) const;

    /// Whether the object's pool holds this very object.
    bool ObjectAlreadyExists(const CKvManaged* object) const;

    /// Takes an object out of its pool; it is the caller's from here on.
    ///
    /// Cost: linear in the number of the pool's objects.
    void RemoveObject(CKvManaged* object);

    /// Releases an object and, when its pool is found, takes it out and deletes it; the pointer is
    /// null then. When its pool is not found the object is released only and stays the caller's.
    ///
    /// Errors: nothing happens to an object that is being released or deleted already.
    /// Cost:   as RemoveObject().
    void DestroyObject(CKvManaged*& object);

    /// Gives an object of a pool another name. When the pool has an object of that name this one is
    /// listed but no longer found, until it is renamed again.
    void RenameObject(CKvManaged*& object, const CKvIdentifier& identifier);

    /// Destroys all pools and makes a new "global", unless that one is busy and stays.
    void Clear();

    /// Destroys one pool and, when that was "global", makes a new one, unless it is busy and stays.
    void Clear(const CKvIdentifier& pool);

    /// Saves the fields of all objects but those whose name begins with "@".
    void SaveVariables();

    /// Puts the saved values of all objects back.
    void ResetVariables();

    // Of the first pool, in the order of addition, without the objects whose name begins with "@";
    // the identifiers also without those that have no name.
    CKvArray<TKvString<char>> GetObjectNameArray() const;
    CKvArray<CKvIdentifier> GetObjectIdentifierArray() const;

protected:
    /// Releases all objects of the first pool of this name, then deletes them and the pool.
    void DestroyPool(const CKvIdentifier& pool);

    /// Does the same pool by pool; the pools themselves go last.
    void DestroyAllPools();

    CKvObjectPool* GetOrCreatePool(const CKvIdentifier& pool);

private:
    /// The pool that the object names, or null; null also for a null object.
    CKvObjectPool* FindPoolOf(const CKvManaged* object) const;
    CKvObjectPool* AppendPool(const CKvIdentifier& pool);

    /// Calls \a operation with every object, pool by pool.
    template <class TOperation>
    void ForEachObject(TOperation operation) const;

    CKvArray<std::unique_ptr<CKvObjectPool>> m_pools;
    CKvIdentifier m_identifier;
};
