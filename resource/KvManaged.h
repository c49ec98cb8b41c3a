// The base of run-time objects that are made rather than loaded: entities, cameras, instances of
// particle systems. A managed object has a name and lives in a named pool of the manager of its
// kind (resource/KvPooledObjectManager.h). It can save the fields that its class describes and put
// them back, as an editor does around a trial run.

#pragma once

#include "core/KvArray.h"
#include "core/KvIdentifier.h"
#include "reflection/KvRTTI.h"
#include "reflection/KvReflectionInformation.h"
#include "reflection/KvReflectionInformationSnapShot.h"

/// Virtual functions and fields stand in the documented order.
///
/// Ownership: made with new; the pool deletes it. It does not copy, since its saved values refer to
///            this very object.
class CKvManaged
{
public:
    static const CKvRTTI TYPE;

    CKvManaged() = default;
    explicit CKvManaged(const CKvIdentifier& identifier) : m_identifier(identifier) {}
    CKvManaged(const CKvManaged&) = delete;
    CKvManaged& operator=(const CKvManaged&) = delete;
    virtual ~CKvManaged();

    /// Frees what the object holds, while all objects that are destroyed with it still stand. It
    /// may find, remove and destroy other objects; asking to destroy this one again does nothing.
    virtual void Release() {}

    virtual CKvIdentifier GetManagerIdentifier() const { return {}; }
    virtual CKvIdentifier GetTypeIdentifier() const { return {}; }

    /// For an object that no pool holds. In a pool CKvPooledObjectManager::RenameObject() changes
    /// the name, since the pool finds objects by it.
    virtual void SetIdentifier(const CKvIdentifier& identifier) { m_identifier = identifier; }
    virtual CKvIdentifier GetIdentifier() const { return m_identifier; }

    /// The pool that the object lives in. Its manager goes there to rename, remove and destroy it.
    virtual CKvIdentifier GetPoolIdentifier() const { return {}; }

    virtual const CKvRTTI& GetRtti() const { return TYPE; }

    /// The fields of the object's class, by offsets from the beginning of this base.
    virtual const CKvArray<CKvReflectionInformation>& GetReflectionInformationArray() const;

    /// Appends the current value of every field to the saved values; those of earlier calls stay.
    virtual void SaveVariables();

    /// Exchanges all saved values in turn with those of the fields, so that the next call brings
    /// back what the fields hold now.
    virtual void ResetVariables();

    const CKvArray<CKvReflectionInformationSnapShot>& GetSavedValues() const
    {
        return m_savedValues;
    }

private:
    CKvArray<CKvReflectionInformationSnapShot> m_savedValues;
    CKvIdentifier m_identifier;
};
