#include "tool/GameDocument.h"

#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "core/KvId.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeNode.h"
#include "tool/FSMInstance.h"

namespace {

/// The parameters that an object gets in addition, with the names that they redefine.
struct CAppliedOverride
{
    const CKvArray<CTemplateParameter>* parameters = nullptr;
    std::unordered_set<std::string_view> names;

    bool Redefines(const CTemplateParameter& parameter) const
    {
        return names.contains(parameter.name.GetText());
    }
};

/// An instance's overrides by object. The first one for an object counts.
class COverrideIndex
{
public:
    explicit COverrideIndex(const CFSMInstance& instance)
    {
        for (const CObjectOverride& source : instance.overrides) {
            const auto [place, isFirst] = m_byObject.try_emplace(source.objectName.GetText());
            if (!isFirst)
                continue;
            place->second.parameters = &source.parameters;
            for (const CTemplateParameter& parameter : source.parameters)
                place->second.names.insert(parameter.name.GetText());
        }
    }

    /// An empty override when there is none for the object.
    const CAppliedOverride& Find(const TKvString<char>& objectName) const
    {
        const auto found = m_byObject.find(objectName.GetText());
        return found != m_byObject.end() ? found->second : m_none;
    }

private:
    std::unordered_map<std::string_view, CAppliedOverride> m_byObject;
    CAppliedOverride m_none;
};

CKvScriptTreeNode* AddNamed(CKvScriptTreeNode& parent, const CKvIdentifier& kind,
                            const TKvString<char>& name)
{
    CKvScriptTreeNode* node = parent.AddNewChild(kind);
    node->ExpectCounts(1, 1);
    node->AddAttribute(CKvScriptTreeAttribute(KVID::GetSingleton().name, name));
    return node;
}

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
    std::vector<CPending> pending = {{&subObjects, &parent}};
    while (!pending.empty()) {
        const CPending task = pending.back();
        pending.pop_back();
        for (const CTemplateObject& object : *task.subObjects) {
            CKvScriptTreeNode* node =
                AddNamed(*task.parent, KVID::GetSingleton().sub_object, object.name);
            node->ExpectCounts(1, object.parameters.GetCount() + object.subObjects.GetCount());
            AddParameters(*node, object.parameters);
            if (!object.subObjects.IsEmpty())
                pending.push_back({&object.subObjects, node});
        }
    }
}

void AddGlobalInstances(CKvScriptTreeNode& list, const CKvArray<CFSMInstance*>& instances)
{
    for (const CFSMInstance* instance : instances) {
        CKvScriptTreeNode* fsm = AddNamed(list, KVID::GetSingleton().fsm, instance->fsmName);
        fsm->ExpectCounts(1, instance->parameters.GetCount() + instance->subObjects.GetCount());
        AddParameters(*fsm, instance->parameters);
        AddSubObjects(*fsm, instance->subObjects);
    }
}

/// Appends the state machine of one object: the defaults that the object does not redefine, the
/// sub-objects, then the object's own parameters.
void AddBoundFsm(CKvScriptTreeNode& object, const CFSMInstance& instance,
                 const CAppliedOverride& applied)
{
    CKvScriptTreeNode* fsm = AddNamed(object, KVID::GetSingleton().fsm, instance.fsmName);
    const int ownCount = applied.parameters != nullptr ? applied.parameters->GetCount() : 0;
    fsm->ExpectCounts(1,
                      instance.parameters.GetCount() + instance.subObjects.GetCount() + ownCount);
    for (const CTemplateParameter& parameter : instance.parameters) {
        if (!applied.Redefines(parameter))
            AddParameter(*fsm, parameter);
    }
    AddSubObjects(*fsm, instance.subObjects);
    if (applied.parameters != nullptr)
        AddParameters(*fsm, *applied.parameters);
}

void AddObjects(CKvScriptTreeNode& list, const CFSMInstanceLists& instances, EMovableType type)
{
    const CKvIdentifier kind(TKvString<char>(GetMovableTypeText(type)));
    for (const CFSMInstance* instance : instances.OfType(type)) {
        const COverrideIndex overrides(*instance);
        for (const TKvString<char>& objectName : instance->objectNames) {
            CKvScriptTreeNode* object = AddNamed(list, kind, objectName);
            AddBoundFsm(*object, *instance, overrides.Find(objectName));
        }
    }
}

}  // namespace

void AssembleGameDocument(const CFSMInstanceLists& instances, CKvScriptTree& document)
{
    const KVID& id = KVID::GetSingleton();
    CKvScriptTreeNode* game = document.CreateRootNode(id.game);
    AddGlobalInstances(*game->AddNewChild(id.object_list), instances.global);
    AddObjects(*game->AddNewChild(id.entity_list), instances, MOVABLE_ENTITY);
    CKvScriptTreeNode* dummies = game->AddNewChild(id.dummy_list);
    AddObjects(*dummies, instances, MOVABLE_DUMMY_AABB3);
    AddObjects(*dummies, instances, MOVABLE_DUMMY_SPHERE);
    AddObjects(*game->AddNewChild(id.particle_system_list), instances, MOVABLE_PARTICLE_SYSTEM);
    AddObjects(*game->AddNewChild(id.light_list), instances, MOVABLE_LIGHT);
}
