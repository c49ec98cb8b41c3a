// One group of a project's settings: a name, groups below it, and fields that reflection describes.
// A group reads and writes itself through these descriptions alone; the groups that every project
// has are in KvProjectSettingsGroups.h.

#pragma once

#include <memory>

#include "core/KvArray.h"
#include "core/KvIdentifier.h"
#include "reflection/KvRTTI.h"
#include "reflection/KvReflectionInformation.h"

class CKvProject;
class CKvScriptTreeNode;

/// Base of all groups. Virtual functions and fields stand in the documented order.
///
/// Settings are bools, ints, floats, texts and strings. A field of another kind may be described;
/// it is neither set nor read nor written.
/// Ownership: a group owns its children; pointers to groups are valid as long as their root.
class CKvProjectSettings
{
public:
    static const CKvRTTI TYPE;

    /// A group without children.
    explicit CKvProjectSettings(const CKvIdentifier& identifier) : m_identifier(identifier) {}
    CKvProjectSettings(const CKvProjectSettings&) = delete;
    CKvProjectSettings& operator=(const CKvProjectSettings&) = delete;
    virtual ~CKvProjectSettings();

    virtual const CKvRTTI& GetRtti() const { return TYPE; }

    /// The fields that the class has, in order; made on first use. Offsets count from the group.
    virtual const CKvArray<CKvReflectionInformation>& GetReflectionInformationArray() const;

    const CKvIdentifier& GetIdentifier() const { return m_identifier; }
    int GetChildCount() const { return m_children.GetCount(); }

    /// Errors: an index out of range asserts.
    CKvProjectSettings* GetChild(int index) const { return m_children[index].get(); }

    /// Makes each own field false, 0 or "". Groups below stay as they are.
    void Initialize();

    /// The first descendant of that name, depth first, or null.
    CKvProjectSettings* FindChild(const CKvIdentifier& identifier) const;

    /// Copies out the description of the first own field of that key.
    ///
    /// Errors: false when there is none; \a out is as it was.
    bool FindReflectionInformation(const CKvIdentifier& key, CKvReflectionInformation& out) const;

    /// Sets an own field from the bool, int, float or TKvString<char> at \a value, by its kind.
    ///
    /// Errors: false when \a value is null or there is no such field.
    bool SetProperty(const CKvIdentifier& key, const void* value);

    /// Appends a node with this group's settings and groups to \a parent. Always true.
    bool SerializeTo(CKvScriptTreeNode* parent, CKvProject* project) const;

    /// Takes over the settings in \a node, those of the groups below too, wherever in it a node
    /// names one. Unknown groups and keys are passed over. What is not in it stays as it is.
    ///
    /// Errors: false for null.
    bool SerializeFrom(CKvScriptTreeNode* node);

protected:
    void AddChild(std::unique_ptr<CKvProjectSettings> child);

private:
    const CKvReflectionInformation* FindField(const CKvIdentifier& key) const;
    void WriteSetting(const CKvReflectionInformation& field, CKvScriptTreeNode& node) const;
    void ReadSetting(const CKvScriptTreeNode& setting);

    CKvIdentifier m_identifier;
    CKvArray<std::unique_ptr<CKvProjectSettings>> m_children;
};
