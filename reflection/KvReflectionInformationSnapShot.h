// The saved value of one field of one object, to put back later: an editor's undo, or the reset
// after a trial run.

#pragma once

#include "core/KvArray.h"
#include "core/KvString.h"
#include "reflection/KvBasicVariant.h"
#include "reflection/KvReflectionInformation.h"

/// A value that copies. Fields stand in the documented order.
///
/// Saved are the kinds that a variant holds (CKvReflectionInformation::GetVariantType), TYPE_STRING
/// and TYPE_RESOURCE; no other, TYPE_TEXT included.
///
/// Ownership: object and resource are not owned; the object outlives the snapshot.
class CKvReflectionInformationSnapShot
{
public:
    /// A snapshot of nothing.
    CKvReflectionInformationSnapShot() = default;

    /// Saves the field's current value; of a null object, nothing.
    CKvReflectionInformationSnapShot(const CKvReflectionInformation& information, void* object);

    CKvReflectionInformationSnapShot(const CKvReflectionInformationSnapShot&) = default;
    CKvReflectionInformationSnapShot(CKvReflectionInformationSnapShot&&) noexcept = default;
    CKvReflectionInformationSnapShot& operator=(const CKvReflectionInformationSnapShot&) = default;
    CKvReflectionInformationSnapShot& operator=(CKvReflectionInformationSnapShot&&) noexcept =
        default;
    virtual ~CKvReflectionInformationSnapShot() = default;

    /// Exchanges the saved and the current value, so that a second call leaves the object as it was
    /// before the first.
    void BackUp();

    /// Appends a snapshot for every object in order and, within it, for every information of the
    /// entry at the same index. Where one list is longer, its rest is passed over.
    ///
    /// Ownership: the new snapshots are the caller's.
    static void SaveReflectionInformation(
        const CKvArray<CKvArray<CKvReflectionInformation>>& informations,
        const CKvArray<void*>& objects, CKvArray<CKvReflectionInformationSnapShot*>& snapshots);

    const CKvReflectionInformation& GetInformation() const { return m_information; }
    void* GetObject() const { return m_object; }

    /// The saved value. A resource's pointer stands whole at the beginning of the data of a variant
    /// that is new otherwise; kinds outside the variants leave it new.
    const CKvBasicVariant& GetValue() const { return m_value; }

    /// The saved text of a TYPE_STRING field.
    const TKvString<char>& GetText() const { return m_text; }

private:
    CKvBasicVariant GetCurrentValue() const;
    TKvString<char> GetCurrentText() const;

    CKvReflectionInformation m_information;
    void* m_object = nullptr;
    CKvBasicVariant m_value;
    TKvString<char> m_text;
};
