#include "tool/Movable.h"

#include <array>
#include <cstdio>

#include "core/KvId.h"
#include "scripttree/KvScriptTreeNode.h"

namespace {

/// How a level lists the objects of one type.
struct CMovableKind
{
    EMovableType type;
    const char* typeText;
    CKvIdentifier KVID::*listNode;
    CKvIdentifier KVID::*itemNode;
    CKvIdentifier KVID::*nameAttribute;
};

/// In the order of the types. Particle systems alone carry their name in another attribute.
constexpr std::array<CMovableKind, kMovableTypeCount> kKinds = {{
    {MOVABLE_ENTITY, "entity", &KVID::entity_list, &KVID::entity, &KVID::name},
    {MOVABLE_DUMMY_AABB3, "dummy_aabb3", &KVID::dummy_aabb3_list, &KVID::dummy_aabb3, &KVID::name},
    {MOVABLE_DUMMY_SPHERE, "dummy_sphere", &KVID::dummy_sphere_list, &KVID::dummy_sphere,
     &KVID::name},
    {MOVABLE_PARTICLE_SYSTEM, "particle_system", &KVID::particle_system_list,
     &KVID::particle_system, &KVID::instancename},
    {MOVABLE_LIGHT, "light", &KVID::light_list, &KVID::light, &KVID::name},
}};

/// The kind whose objects a list node holds, or null.
const CMovableKind* FindKind(const CKvIdentifier& listNode)
{
    const KVID& id = KVID::GetSingleton();
    for (const CMovableKind& kind : kKinds) {
        if (listNode == id.*kind.listNode)
            return &kind;
    }
    return nullptr;
}

}  // namespace

const char* GetMovableTypeText(EMovableType type)
{
    for (const CMovableKind& kind : kKinds) {
        if (kind.type == type)
            return kind.typeText;
    }
    return "";
}

void ScanLevelMovables(const CKvScriptTreeNode& level, CKvArray<CMovable>& movables)
{
    const KVID& id = KVID::GetSingleton();
    for (int i = 0; i < level.GetChildCount(); ++i) {
        const CKvScriptTreeNode& list = *level.GetChild(i);
        const CMovableKind* kind = FindKind(list.GetIdentifier());
        if (kind == nullptr)
            continue;
        for (int j = 0; j < list.GetChildCount(); ++j) {
            const CKvScriptTreeNode& item = *list.GetChild(j);
            if (item.GetIdentifier() == id.*kind->itemNode)
                movables.Add({item.GetAttributeValueAsString(id.*kind->nameAttribute), kind->type});
        }
    }
}

void PrintMovables(const CKvArray<CMovable>& movables)
{
    for (const CMovable& movable : movables)
        std::printf("Movable (%s) name = '%s'\n", GetMovableTypeText(movable.type),
                    movable.name.GetText());
}
