#include "tool/TemplateReader.h"

#include <cstdio>
#include <utility>
#include <vector>

#include "core/KvId.h"
#include "scripttree/KvScriptTreeNode.h"

namespace {

/// A node being read and the record that it gives.
struct CPlace
{
    const CKvScriptTreeNode* node;
    int nextChild;
    CTemplateObject object;
};

CPlace StartObject(const CKvScriptTreeNode& node)
{
    const KVID& id = KVID::GetSingleton();
    CPlace place = {&node, 0, {}};
    place.object.name = node.GetAttributeValueAsString(id.name);
    place.object.parameters.SetGrowthStep(node.GetChildrenCountById(id.parameter));
    place.object.subObjects.SetGrowthStep(node.GetChildrenCountById(id.sub_object));
    return place;
}

/// Reads one child that is no sub-object.
bool ReadPart(const CKvScriptTreeNode& child, CTemplateList& templates, CTemplateObject& object)
{
    const KVID& id = KVID::GetSingleton();
    if (child.GetIdentifier() == id.template_)
        return IncludeTemplate(child, templates, object.parameters, object.subObjects);
    if (child.GetIdentifier() == id.parameter)
        object.parameters.Add(ReadTemplateParameter(child));
    return true;
}

struct CContentCount
{
    std::int64_t parameters = 0;
    std::int64_t values = 0;
    std::int64_t subObjects = 0;
};

CContentCount CountContent(const CTemplateObject& object)
{
    CContentCount count;
    std::vector<const CTemplateObject*> pending = {&object};
    while (!pending.empty()) {
        const CTemplateObject& current = *pending.back();
        pending.pop_back();
        count.parameters += current.parameters.GetCount();
        count.subObjects += current.subObjects.GetCount();
        for (const CTemplateParameter& parameter : current.parameters)
            count.values += parameter.values.GetCount();
        for (const CTemplateObject& subObject : current.subObjects)
            pending.push_back(&subObject);
    }
    return count;
}

}  // namespace

bool CTemplateList::Add(CTemplateObject&& object)
{
    const CContentCount count = CountContent(object);
    if (count.parameters + count.subObjects > kMaxContent)
        return false;
    const int index = m_entries.GetCount();
    m_entries.Add({std::move(object), count.parameters + count.values + count.subObjects});
    m_lastOfName[m_entries[index].object.name.GetText()] = index;
    return true;
}

const CTemplateList::CEntry* CTemplateList::Find(const TKvString<char>& name) const
{
    const auto found = m_lastOfName.find(name.GetText());
    return found != m_lastOfName.end() ? &m_entries[found->second] : nullptr;
}

bool CTemplateList::CountInclusion(const CEntry& included)
{
    m_included += included.includedCount;
    return m_included <= kMaxIncluded;
}

bool ReadTemplateList(const CKvScriptTreeNode& root, CTemplateList& templates)
{
    const KVID& id = KVID::GetSingleton();
    for (int i = 0; i < root.GetChildCount(); ++i) {
        const CKvScriptTreeNode& child = *root.GetChild(i);
        if (child.GetIdentifier() != id.template_)
            continue;
        std::optional<CTemplateObject> object = ReadTemplateObject(child, templates);
        const char* fault = nullptr;
        if (!object)
            fault = "includes";
        else if (!templates.Add(std::move(*object)))
            fault = "holds";
        if (fault != nullptr) {
            std::fprintf(stderr, "ERROR : template '%s' %s too many parameters and sub-objects\n",
                         child.GetAttributeValueAsString(id.name).GetText(), fault);
            return false;
        }
    }
    return true;
}

std::optional<CTemplateObject> ReadTemplateObject(const CKvScriptTreeNode& node,
                                                  CTemplateList& templates)
{
    std::vector<CPlace> path;
    path.push_back(StartObject(node));
    for (;;) {
        const CKvScriptTreeNode* child = path.back().node->GetChild(path.back().nextChild++);
        if (child == nullptr) {
            CTemplateObject finished = std::move(path.back().object);
            path.pop_back();
            if (path.empty())
                return finished;
            path.back().object.subObjects.Add(std::move(finished));
        } else if (child->GetIdentifier() == KVID::GetSingleton().sub_object) {
            path.push_back(StartObject(*child));
        } else if (!ReadPart(*child, templates, path.back().object)) {
            return std::nullopt;
        }
    }
}

CTemplateParameter ReadTemplateParameter(const CKvScriptTreeNode& node)
{
    const KVID& id = KVID::GetSingleton();
    CTemplateParameter parameter;
    parameter.name = node.GetAttributeValueAsString(id.name);
    parameter.type = node.GetAttributeValueAsString(id.type);
    TKvString<char> value;
    if (node.GetAttributeValueAsString(id.value, value)) {
        parameter.kind = PARAMETER_SINGLE;
        parameter.values.SetGrowthStep(1);
        parameter.values.Add(std::move(value));
        return parameter;
    }
    parameter.kind = PARAMETER_LIST;
    parameter.values.SetGrowthStep(node.GetChildCount());
    for (int i = 0; i < node.GetChildCount(); ++i)
        parameter.values.Add(node.GetChild(i)->GetAttributeValueAsString(id.value));
    return parameter;
}

bool IncludeTemplate(const CKvScriptTreeNode& node, CTemplateList& templates,
                     CKvArray<CTemplateParameter>& parameters,
                     CKvArray<CTemplateObject>& subObjects)
{
    const CTemplateList::CEntry* included =
        templates.Find(node.GetAttributeValueAsString(KVID::GetSingleton().name));
    if (included == nullptr)
        return true;
    if (!templates.CountInclusion(*included))
        return false;
    for (const CTemplateParameter& parameter : included->object.parameters)
        parameters.Add(parameter);
    for (const CTemplateObject& subObject : included->object.subObjects)
        subObjects.Add(subObject);
    return true;
}
