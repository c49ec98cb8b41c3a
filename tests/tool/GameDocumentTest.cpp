#include "tool/GameDocument.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeSerializerTML.h"
#include "scripttree/KvScriptTreeSerializerXML.h"
#include "tests/support/KvTemporaryFolder.h"
#include "tool/FSMInstance.h"

namespace {

using CParameters = CKvArray<CTemplateParameter>;
using CText = TKvString<char>;

// Random instances of few texts, so that objects, overrides and parameters often share one.

std::mt19937 g_random(20240303);

template <class T>
CKvArray<T> Some(unsigned limit, T (*make)())
{
    CKvArray<T> made;
    for (auto i = g_random() % limit; i > 0; --i)
        made.Add(make());
    return made;
}

CText Text()
{
    return std::array{"", "a", "b", "c", "door", "12", "-1.5"}[g_random() % 7];
}

CTemplateParameter Parameter()
{
    const CKvArray<CText> values = Some(4, Text);
    const bool isSingle = values.GetCount() == 1 && g_random() % 4 > 0;
    return {isSingle ? PARAMETER_SINGLE : PARAMETER_LIST, Text(), Text(), values};
}

CTemplateObject SubObject()
{
    CTemplateObject object;
    object.name = Text();
    object.parameters = Some(5, Parameter);
    object.subObjects = Some(2, SubObject);
    return object;
}

CFSMInstance* Instance()
{
    auto* instance = new CFSMInstance;
    instance->fsmName = Text();
    instance->objectNames = Some(20, Text);
    instance->parameters = Some(5, Parameter);
    instance->subObjects = Some(3, SubObject);
    instance->overrides = Some(
        5, +[] {
            return CObjectOverride{Text(), Some(5, Parameter)};
        });
    return instance;
}

// The document as XML, every look-up a search.

std::string Node(const std::string& kind,
                 const std::vector<std::pair<std::string, CText>>& attributes,
                 const std::string& below)
{
    std::string xml = "<" + kind;
    for (const auto& [name, value] : attributes)
        xml.append(" ").append(name).append("='").append(value.GetText()).append("'");
    return xml + ">" + below + "</" + kind + ">";
}

std::string Xml(const CTemplateParameter& parameter)
{
    const auto& [kind, name, type, values] = parameter;
    if (kind == PARAMETER_SINGLE)
        return Node("parameter", {{"name", name}, {"type", type}, {"value", values[0]}}, "");
    std::string below;
    for (const CText& value : values)
        below += Node("parameter", {{"value", value}}, "");
    return Node("parameter", {{"name", name}, {"type", type}}, below);
}

std::string Block(const char* kind, const CText& name, const CParameters& parameters,
                  const CKvArray<CTemplateObject>& subObjects, const CParameters& own = {})
{
    std::string below;
    for (const CTemplateParameter& parameter : parameters) {
        const auto redefines = [&](const auto& other) { return other.name == parameter.name; };
        if (std::none_of(own.begin(), own.end(), redefines))
            below += Xml(parameter);
    }
    for (const CTemplateObject& object : subObjects)
        below += Block("sub_object", object.name, object.parameters, object.subObjects);
    for (const CTemplateParameter& parameter : own)
        below += Xml(parameter);
    return Node(kind, {{"name", name}}, below);
}

std::string Objects(const CFSMInstanceLists& lists, EMovableType type)
{
    std::string xml;
    for (const CFSMInstance* rule : lists.OfType(type))
        for (const CText& name : rule->objectNames) {
            CParameters own;
            for (int i = rule->overrides.GetCount() - 1; i >= 0; --i)
                if (rule->overrides[i].objectName == name)
                    own = rule->overrides[i].parameters;
            xml += Node(GetMovableTypeText(type), {{"name", name}},
                        Block("fsm", rule->fsmName, rule->parameters, rule->subObjects, own));
        }
    return xml;
}

std::string Document(const CFSMInstanceLists& lists)
{
    std::string xml = "<game><object_list>";
    for (const CFSMInstance* rule : lists.global)
        xml += Block("fsm", rule->fsmName, rule->parameters, rule->subObjects);
    xml += "</object_list><entity_list>" + Objects(lists, MOVABLE_ENTITY);
    xml += "</entity_list><dummy_list>" + Objects(lists, MOVABLE_DUMMY_AABB3);
    xml += Objects(lists, MOVABLE_DUMMY_SPHERE) + "</dummy_list><particle_system_list>";
    xml += Objects(lists, MOVABLE_PARTICLE_SYSTEM) + "</particle_system_list><light_list>";
    return xml + Objects(lists, MOVABLE_LIGHT) + "</light_list></game>";
}

TEST(GameDocumentTest, TheStreamedDocumentHasTheBytesOfTheTreeSavedWhole)
{
    const CKvTemporaryFolder folder;
    for (int round = 0; round < 60; ++round) {
        CFSMInstanceLists lists;
        for (int i = round % 4; i > 0; --i) {
            lists.global.Add(Instance());
            for (CKvArray<CFSMInstance*>& list : lists.byType)
                list.Add(Instance());
        }
        CKvScriptTree tree;
        ASSERT_TRUE(CKvScriptTreeSerializerXML().Parse(tree, Document(lists).c_str()));
        const CText saved = folder.Path("saved").c_str();
        ASSERT_TRUE(CKvScriptTreeSerializerTML().Save(tree, saved, round % 2 == 0));
        ASSERT_TRUE(WriteGameDocument(lists, folder.Path("streamed").c_str(), round % 2 == 0));
        ASSERT_TRUE(folder.Read("streamed") == folder.Read("saved")) << round;
    }
}

}  // namespace
