#include "project/KvProjectSettings.h"

#include <utility>
#include <vector>

#include "core/KvId.h"
#include "scripttree/KvScriptTreeNode.h"

using Information = CKvReflectionInformation;

const CKvRTTI CKvProjectSettings::TYPE("CKvProjectSettings", nullptr);

CKvProjectSettings::~CKvProjectSettings() = default;

const CKvArray<Information>& CKvProjectSettings::GetReflectionInformationArray() const
{
    static const CKvArray<Information> s_fields;
    return s_fields;
}

void CKvProjectSettings::Initialize()
{
    for (const Information& field : GetReflectionInformationArray()) {
        switch (field.GetType()) {
            case Information::TYPE_BOOL:
                field.SetValueBool(this, false);
                break;
            case Information::TYPE_INT:
                field.SetValueInt(this, 0);
                break;
            case Information::TYPE_FLOAT:
                field.SetValueFloat(this, 0.0F);
                break;
            case Information::TYPE_TEXT:
            case Information::TYPE_STRING:
                field.SetValueString(this, TKvString<char>());
                break;
            default:
                break;
        }
    }
}

CKvProjectSettings* CKvProjectSettings::FindChild(const CKvIdentifier& identifier) const
{
    for (const auto& child : m_children) {
        if (child->m_identifier == identifier)
            return child.get();
        if (CKvProjectSettings* found = child->FindChild(identifier))
            return found;
    }
    return nullptr;
}

bool CKvProjectSettings::FindReflectionInformation(const CKvIdentifier& key, Information& out) const
{
    const Information* field = FindField(key);
    if (field != nullptr)
        out = *field;
    return field != nullptr;
}

bool CKvProjectSettings::SetProperty(const CKvIdentifier& key, const void* value)
{
    const Information* field = FindField(key);
    if (field == nullptr || value == nullptr)
        return false;
    switch (field->GetType()) {
        case Information::TYPE_BOOL:
            field->SetValueBool(this, *static_cast<const bool*>(value));
            break;
        case Information::TYPE_INT:
            field->SetValueInt(this, *static_cast<const int*>(value));
            break;
        case Information::TYPE_FLOAT:
            field->SetValueFloat(this, *static_cast<const float*>(value));
            break;
        case Information::TYPE_TEXT:
        case Information::TYPE_STRING:
            field->SetValueString(this, *static_cast<const TKvString<char>*>(value));
            break;
        default:
            break;
    }
    return true;
}

bool CKvProjectSettings::SerializeTo(CKvScriptTreeNode* parent, CKvProject* project) const
{
    if (parent == nullptr)
        return true;
    CKvScriptTreeNode* node = parent->AddNewChild(m_identifier);
    for (const Information& field : GetReflectionInformationArray())
        WriteSetting(field, *node);
    for (const auto& child : m_children)
        child->SerializeTo(node, project);
    return true;
}

bool CKvProjectSettings::SerializeFrom(CKvScriptTreeNode* node)
{
    struct CPlace
    {
        CKvProjectSettings* group;
        const CKvScriptTreeNode* node;
        int nextChild;
    };
    if (node == nullptr)
        return false;
    const CKvIdentifier& setting = KVID::GetSingleton().setting;
    std::vector<CPlace> path = {{this, node, 0}};
    while (!path.empty()) {
        CKvProjectSettings* const group = path.back().group;
        const CKvScriptTreeNode* child = path.back().node->GetChild(path.back().nextChild++);
        if (child == nullptr) {
            path.pop_back();
        } else if (child->GetIdentifier() == setting) {
            group->ReadSetting(*child);
        } else {
            const bool isOwn = child->GetIdentifier() == group->m_identifier;
            CKvProjectSettings* named = isOwn ? group : group->FindChild(child->GetIdentifier());
            if (named != nullptr)
                path.push_back({named, child, 0});
        }
    }
    return true;
}

void CKvProjectSettings::AddChild(std::unique_ptr<CKvProjectSettings> child)
{
    m_children.Add(std::move(child));
}

const Information* CKvProjectSettings::FindField(const CKvIdentifier& key) const
{
    for (const Information& field : GetReflectionInformationArray()) {
        if (field.GetIdentifier() == key)
            return &field;
    }
    return nullptr;
}

void CKvProjectSettings::WriteSetting(const Information& field, CKvScriptTreeNode& node) const
{
    const KVID& id = KVID::GetSingleton();
    CKvScriptTreeAttribute value;
    switch (field.GetType()) {
        case Information::TYPE_BOOL:
            if (!field.GetValueBool(this))
                return;
            value = CKvScriptTreeAttribute(id.value, 1);
            break;
        case Information::TYPE_INT:
            value = CKvScriptTreeAttribute(id.value, field.GetValueInt(this));
            break;
        case Information::TYPE_FLOAT:
            value = CKvScriptTreeAttribute(id.value, field.GetValueFloat(this));
            break;
        case Information::TYPE_TEXT:
        case Information::TYPE_STRING:
            value = CKvScriptTreeAttribute(id.value, field.GetValueString(this));
            break;
        default:
            return;
    }
    CKvScriptTreeNode* setting = node.AddNewChild(id.setting);
    setting->AddAttribute(CKvScriptTreeAttribute(id.name, field.GetIdentifier().DebugString()));
    setting->AddAttribute(std::move(value));
}

void CKvProjectSettings::ReadSetting(const CKvScriptTreeNode& setting)
{
    const KVID& id = KVID::GetSingleton();
    const Information* field = FindField(CKvIdentifier(setting.GetAttributeValueAsString(id.name)));
    if (field == nullptr)
        return;
    switch (field->GetType()) {
        case Information::TYPE_BOOL:
            field->SetValueBool(this, setting.GetAttributeValueAsBool(id.value));
            break;
        case Information::TYPE_INT:
            field->SetValueInt(this, setting.GetAttributeValueAsInt(id.value));
            break;
        case Information::TYPE_FLOAT:
            field->SetValueFloat(this, setting.GetAttributeValueAsFloat(id.value));
            break;
        case Information::TYPE_TEXT:
        case Information::TYPE_STRING:
            field->SetValueString(this, setting.GetAttributeValueAsString(id.value));
            break;
        default:
            break;
    }
}
