#include "tool/GameDocument.h"

#include <climits>
#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "core/KvId.h"
#include "core/KvSaltedHash.h"
#include "file/KvWholeFileWriter.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvTmlWriter.h"
#include "tool/FSMInstance.h"

namespace {

using CInstances = CKvArray<CFSMInstance*>;

/// An instance's overrides by object. The first one for an object counts.
class COverrideIndex
{
public:
    explicit COverrideIndex(const CFSMInstance& instance)
    {
        for (const CObjectOverride& source : instance.overrides)
            m_byObject.try_emplace(source.objectName.GetText(), &source);
    }

    /// Null when there is none for the object.
    const CObjectOverride* Find(const TKvString<char>& objectName) const
    {
        const auto found = m_byObject.find(objectName.GetText());
        return found != m_byObject.end() ? found->second : nullptr;
    }

private:
    std::unordered_map<std::string_view, const CObjectOverride*, CKvSaltedHash> m_byObject;
};

void AddParameter(CKvScriptTreeNode& parent, const CTemplateParameter& parameter)
{
    const KVID& id = KVID::GetSingleton();
    const bool single = parameter.kind == PARAMETER_SINGLE;
    CKvScriptTreeNode* node = parent.AddNewChild(id.parameter);
    node->ExpectCounts(single ? 3 : 2, parameter.values.GetCount());
    node->AddAttribute(CKvScriptTreeAttribute(id.name, parameter.name));
    node->AddAttribute(CKvScriptTreeAttribute(id.type, parameter.type));
    if (single) {
        node->AddAttribute(CKvScriptTreeAttribute(id.value, parameter.values[0]));
        return;
    }
    for (const TKvString<char>& value : parameter.values) {
        CKvScriptTreeNode* item = node->AddNewChild(id.parameter);
        item->ExpectCounts(1, 0);
        item->AddAttribute(CKvScriptTreeAttribute(id.value, value));
    }
}

void AddParameters(CKvScriptTreeNode& parent, const CKvArray<CTemplateParameter>& parameters)
{
    for (const CTemplateParameter& parameter : parameters)
        AddParameter(parent, parameter);
}

void AddSubObjects(CKvScriptTreeNode& parent, const CKvArray<CTemplateObject>& subObjects)
{
    struct CPending
    {
        const CKvArray<CTemplateObject>* subObjects;
        CKvScriptTreeNode* parent;
    };
    const KVID& id = KVID::GetSingleton();
    std::vector<CPending> pending = {{&subObjects, &parent}};
    while (!pending.empty()) {
        const CPending task = pending.back();
        pending.pop_back();
        for (const CTemplateObject& object : *task.subObjects) {
            CKvScriptTreeNode* node = task.parent->AddNewChild(id.sub_object);
            node->ExpectCounts(1, object.parameters.GetCount() + object.subObjects.GetCount());
            node->AddAttribute(CKvScriptTreeAttribute(id.name, object.name));
            AddParameters(*node, object.parameters);
            if (!object.subObjects.IsEmpty())
                pending.push_back({&object.subObjects, node});
        }
    }
}

/// Makes a state-machine block: the instance's parameters, its sub-objects and, for an object that
/// has an override, the parameters of that one, which then stand in place of those they redefine.
CKvOwnedScriptTreeNode MakeFsm(const CFSMInstance& instance, const CObjectOverride* own = nullptr)
{
    const KVID& id = KVID::GetSingleton();
    std::unordered_set<std::string_view, CKvSaltedHash> redefined;
    if (own != nullptr) {
        for (const CTemplateParameter& parameter : own->parameters)
            redefined.insert(parameter.name.GetText());
    }
    CKvOwnedScriptTreeNode fsm(new CKvScriptTreeNode(id.fsm));
    const int ownCount = own != nullptr ? own->parameters.GetCount() : 0;
    fsm->ExpectCounts(1,
                      instance.parameters.GetCount() + instance.subObjects.GetCount() + ownCount);
    fsm->AddAttribute(CKvScriptTreeAttribute(id.name, instance.fsmName));
    for (const CTemplateParameter& parameter : instance.parameters) {
        if (!redefined.contains(parameter.name.GetText()))
            AddParameter(*fsm, parameter);
    }
    AddSubObjects(*fsm, instance.subObjects);
    if (own != nullptr)
        AddParameters(*fsm, own->parameters);
    return fsm;
}

void WriteGlobalList(CKvTmlWriter& writer, const CInstances& instances)
{
    writer.WriteNode(CKvScriptTreeNode(KVID::GetSingleton().object_list), instances.GetCount());
    for (const CFSMInstance* instance : instances)
        writer.WriteTree(*MakeFsm(*instance));
}

/// Writes one block for each pair of an instance and an object. All objects of an instance that
/// have no override share one state-machine block, which is made once.
void WriteObjects(CKvTmlWriter& writer, const CInstances& instances, EMovableType type)
{
    CKvTmlFragment shared = writer.MakeFragment();
    CKvScriptTreeNode object(CKvIdentifier(GetMovableTypeText(type)));
    object.AddAttribute(CKvScriptTreeAttribute(KVID::GetSingleton().name, ""));
    for (const CFSMInstance* instance : instances) {
        const COverrideIndex overrides(*instance);
        bool isMade = false;
        for (const TKvString<char>& objectName : instance->objectNames) {
            object.GetAttribute(0).SetValue(objectName);
            writer.WriteNode(object, 1);
            if (const CObjectOverride* own = overrides.Find(objectName))
                writer.WriteTree(*MakeFsm(*instance, own));
            else if (std::exchange(isMade, true))
                writer.WriteAgain(shared);
            else
                writer.WriteTree(*MakeFsm(*instance), shared);
        }
    }
}

bool WriteObjectList(CKvTmlWriter& writer, const CKvIdentifier& name,
                     const CFSMInstanceLists& instances, std::initializer_list<EMovableType> types)
{
    std::int64_t objectCount = 0;
    for (const EMovableType type : types) {
        for (const CFSMInstance* instance : instances.OfType(type))
            objectCount += instance->objectNames.GetCount();
    }
    if (objectCount > INT_MAX)
        return false;  // more than the format can count
    writer.WriteNode(CKvScriptTreeNode(name), static_cast<int>(objectCount));
    for (const EMovableType type : types)
        WriteObjects(writer, instances.OfType(type), type);
    return true;
}

bool WriteDocument(CKvTmlWriter& writer, const CFSMInstanceLists& instances)
{
    constexpr int kListCount = 5;
    const KVID& id = KVID::GetSingleton();
    writer.WriteNode(CKvScriptTreeNode(id.game), kListCount);
    WriteGlobalList(writer, instances.global);
    return WriteObjectList(writer, id.entity_list, instances, {MOVABLE_ENTITY}) &&
           WriteObjectList(writer, id.dummy_list, instances,
                           {MOVABLE_DUMMY_AABB3, MOVABLE_DUMMY_SPHERE}) &&
           WriteObjectList(writer, id.particle_system_list, instances, {MOVABLE_PARTICLE_SYSTEM}) &&
           WriteObjectList(writer, id.light_list, instances, {MOVABLE_LIGHT}) && writer.Finish();
}

}  // namespace

bool WriteGameDocument(const CFSMInstanceLists& instances, const TKvString<char>& path,
                       bool bigEndian)
{
    CKvWholeFileWriter file;
    if (file.Open(path, EKvFileSystemOpenMode::WriteBinary) != EKvFileSystemError::Success)
        return false;
    CKvTmlWriter writer(file.GetHandle(), bigEndian);
    return WriteDocument(writer, instances) && file.Commit() == EKvFileSystemError::Success;
}
