// One named pool of managed objects: a list in the order of addition and a table that finds them by
// name. It owns its objects and destroys them in such a way that what an object does to its pool
// while it goes is sound.

#pragma once

#include "core/KvArray.h"
#include "core/KvHashTable.h"
#include "core/KvIdentifier.h"
#include "core/KvSaltedHash.h"
#include "resource/KvManaged.h"

/// How the object table treats its entries.
class CKvObjectHashingPolicy
{
public:
    using Key = CKvIdentifier;

    static Key GetKey(const CKvManaged& object) { return object.GetIdentifier(); }
    static bool MatchKey(const CKvManaged& object, const Key& key)
    {
        return object.GetIdentifier() == key;
    }

    /// The low 32 bits of the identifier's value.
    static int CreateHash(const Key& key) { return key.HashTable_CreateHash(); }
};

/// Fields stand in the documented order.
///
/// An object whose name another one of the pool has is listed but not found, until one of the two
/// gets another name and this one is renamed, be it to the name that it has.
///
/// Ownership: the pool owns its objects until they are removed or destroyed, or it ends.
/// Errors:    null objects change nothing, nor do objects that the pool does not hold (but see
///            DestroyObject).
class CKvObjectPool
{
public:
    explicit CKvObjectPool(const CKvIdentifier& identifier) : m_identifier(identifier) {}
    CKvObjectPool(const CKvObjectPool&) = delete;
    CKvObjectPool& operator=(const CKvObjectPool&) = delete;

    /// Destroys the objects.
    ~CKvObjectPool() { DestroyObjects(); }

    CKvIdentifier GetIdentifier() const { return m_identifier; }
    int GetObjectCount() const { return m_objects.GetCount(); }

    /// Errors: an index out of range asserts; null in a release build.
    CKvManaged* GetObject(int index) const;

    /// The object of this name, or null.
    CKvManaged* FindObject(const CKvIdentifier& identifier) const;

    /// Whether the pool holds this very object.
    ///
    /// Cost: one probe sequence, or two.
    bool Contains(const CKvManaged* object) const;

    /// Appends an object.
    ///
    /// Ownership: the object is the pool's from here on.
    /// Errors:    false when the pool holds it already.
    bool AddObject(CKvManaged* object);

    /// Takes an object out; it is the caller's from here on.
    ///
    /// Errors: false when the pool does not hold it.
    /// Cost:   linear in the number of objects, as the later ones move down by one place.
    bool RemoveObject(CKvManaged* object);

    /// Gives an object another name; it keeps its place in the list.
    ///
    /// Errors: false when the pool does not hold it.
    bool RenameObject(CKvManaged* object, const CKvIdentifier& identifier);

    /// Releases an object (unless DestroyObjects() did already), takes it out where the pool holds
    /// it, and deletes it; the pointer is null then.
    ///
    /// Errors: nothing happens to an object that is being released or deleted already.
    /// Cost:   as RemoveObject().
    void DestroyObject(CKvManaged*& object);

    /// Releases every object, then deletes every object, in the order of the list. Those that are
    /// added meanwhile are destroyed as well. Does nothing while the pool is busy.
    void DestroyObjects();

    /// Whether one of the objects is being released or deleted right now. The pool must outlast
    /// that.
    bool IsBusy() const { return m_work != nullptr; }

private:
    class CWork;

    /// Keys are the objects themselves.
    struct CAddressPolicy
    {
        using Key = const CKvManaged*;

        static Key GetKey(const CKvManaged& object) { return &object; }
        static bool MatchKey(const CKvManaged& object, Key key) { return &object == key; }
        static int CreateHash(Key key);
    };

    /// The number of slots that a new pool has, as a power of two.
    static constexpr int kLog2SlotCount = 13;

    int GetIndex(const CKvManaged* object) const;
    void Index(CKvManaged* object);
    void RemoveFromIndex(CKvManaged* object);

    CKvArray<CKvManaged*> m_objects;
    CKvIdentifier m_identifier;

    /// Salted, since names come from documents and may be chosen to collide.
    TKvHashTable<CKvManaged, TKvSaltedPolicy<CKvObjectHashingPolicy>> m_table{kLog2SlotCount};

    /// The objects that are listed but not found.
    TKvHashTable<CKvManaged, CAddressPolicy> m_unfindable{1};

    /// The innermost of the releases and deletions under way.
    const CWork* m_work = nullptr;

    /// So many of the first objects in the list were released by DestroyObjects().
    int m_releasedCount = 0;
};
