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
    CPlace place = {&node, 0, {}};
    place.object.name = node.GetAttributeValueAsString(KVID::GetSingleton().name);
    return place;
}

/// Reads one child that is no sub-object.
bool ReadPart(const CKvScriptTreeNode& child, const CTemplateList& templates,
              CTemplateObject& object, CContentCount& count)
{
    const KVID& id = KVID::GetSingleton();
    if (child.GetIdentifier() == id.template_)
        return IncludeTemplate(child, templates, object.parameters, object.subObjects, count);
    if (child.GetIdentifier() != id.parameter)
        return true;
    object.parameters.Add(ReadTemplateParameter(child));
    return count.Add(1);
}

}  // namespace

void CTemplateList::Add(CTemplateObject&& object, std::int64_t contentCount)
{
    m_lastOfName[object.name.GetText()] = m_entries.GetCount();
    m_entries.Add({std::move(object), contentCount});
}

const CTemplateList::CEntry* CTemplateList::Find(const TKvString<char>& name) const
{
    const auto found = m_lastOfName.find(name.GetText());
    return found != m_lastOfName.end() ? &m_entries[found->second] : nullptr;
}

bool ReadTemplateList(const CKvScriptTreeNode& root, CTemplateList& templates)
{
    for (int i = 0; i < root.GetChildCount(); ++i) {
        const CKvScriptTreeNode& child = *root.GetChild(i);
        if (child.GetIdentifier() != KVID::GetSingleton().template_)
            continue;
        CContentCount count;
        std::optional<CTemplateObject> object = ReadTemplateObject(child, templates, count);
        if (!object) {
            std::fprintf(stderr,
                         "ERROR : template '%s' holds more than %lld parameters and sub-objects\n",
                         child.GetAttributeValueAsString(KVID::GetSingleton().name).GetText(),
                         static_cast<long long>(CContentCount::kMax));
            return false;
        }
        templates.Add(std::move(*object), count.Get());
    }
    return true;
}

std::optional<CTemplateObject> ReadTemplateObject(const CKvScriptTreeNode& node,
                                                  const CTemplateList& templates,
                                                  CContentCount& count)
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
            if (!count.Add(1))
                return std::nullopt;
            path.push_back(StartObject(*child));
        } else if (!ReadPart(*child, templates, path.back().object, count)) {
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

bool IncludeTemplate(const CKvScriptTreeNode& node, const CTemplateList& templates,
                     CKvArray<CTemplateParameter>& parameters,
                     CKvArray<CTemplateObject>& subObjects, CContentCount& count)
{
    const CTemplateList::CEntry* included =
        templates.Find(node.GetAttributeValueAsString(KVID::GetSingleton().name));
    if (included == nullptr)
        return true;
    if (!count.Add(included->contentCount))
        return false;
    for (const CTemplateParameter& parameter : included->object.parameters)
        parameters.Add(parameter);
    for (const CTemplateObject& subObject : included->object.subObjects)
        subObjects.Add(subObject);
    return true;
}
