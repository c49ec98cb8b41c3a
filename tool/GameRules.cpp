#include "tool/GameRules.h"

#include <cstdio>
#include <cstring>
#include <optional>
#include <utility>

#include "core/KvId.h"
#include "scripttree/KvScriptTreeNode.h"
#include "tool/TemplateReader.h"

namespace {

using CTexts = CKvArray<TKvString<char>>;

/// Whether \a text occurs in \a name, byte for byte. Nothing occurs in an empty name; an empty text
/// occurs in all others.
bool Contains(const TKvString<char>& name, const TKvString<char>& text)
{
    return !name.IsEmpty() && std::strstr(name.GetText(), text.GetText()) != nullptr;
}

bool ContainsAny(const TKvString<char>& name, const CTexts& texts)
{
    for (const TKvString<char>& text : texts) {
        if (Contains(name, text))
            return true;
    }
    return false;
}

CObjectOverride ReadOverride(const CKvScriptTreeNode& node)
{
    const KVID& id = KVID::GetSingleton();
    CObjectOverride result;
    result.objectName = node.GetAttributeValueAsString(id.name);
    for (int i = 0; i < node.GetChildCount(); ++i) {
        if (node.GetChild(i)->GetIdentifier() == id.parameter)
            result.parameters.Add(ReadTemplateParameter(*node.GetChild(i)));
    }
    return result;
}

/// Reads one child of a rule into the instance or the excluded texts. False when \a count exceeds
/// its maximum.
bool ReadRulePart(const CKvScriptTreeNode& child, const CTemplateList& templates,
                  CFSMInstance& instance, CTexts& excluded, CContentCount& count)
{
    const KVID& id = KVID::GetSingleton();
    const CKvIdentifier& kind = child.GetIdentifier();
    if (kind == id.excepted) {
        excluded.Add(child.GetAttributeValueAsString(id.name_include_string));
    } else if (kind == id.template_) {
        return IncludeTemplate(child, templates, instance.parameters, instance.subObjects, count);
    } else if (kind == id.parameter) {
        instance.parameters.Add(ReadTemplateParameter(child));
        return count.Add(1);
    } else if (kind == id.sub_object) {
        std::optional<CTemplateObject> object = ReadTemplateObject(child, templates, count);
        if (!object || !count.Add(1))
            return false;
        instance.subObjects.Add(std::move(*object));
    } else if (kind == id.entity) {
        instance.overrides.Add(ReadOverride(child));
    }
    return true;
}

/// Names the objects whose names contain the pattern and none of the excluded texts. False after
/// the message when they are of two types.
bool BindObjects(CFSMInstance& instance, const TKvString<char>& pattern, const CTexts& excluded,
                 const CKvArray<CMovable>& movables)
{
    for (const CMovable& movable : movables) {
        if (!Contains(movable.name, pattern) || ContainsAny(movable.name, excluded))
            continue;
        if (instance.objectType != MOVABLE_NONE && instance.objectType != movable.type) {
            const TKvString<char>& last = instance.objectNames[instance.objectNames.GetCount() - 1];
            std::fprintf(stderr,
                         "ERROR : fsm '%s' (type='%s') is affecting two objects with different "
                         "types 1:'%s' vs. 2:'%s'\n",
                         pattern.GetText(), instance.fsmName.GetText(), last.GetText(),
                         movable.name.GetText());
            std::fflush(stderr);
            return false;
        }
        instance.objectType = movable.type;
        instance.objectNames.Add(movable.name);
    }
    return true;
}

/// The list that a rule's instance belongs to; null when its pattern matched no object, so that
/// there is nothing to create.
CKvArray<CFSMInstance*>* ChooseList(const CKvScriptTreeNode& rule, const CFSMInstance& instance,
                                    CFSMInstanceLists& lists)
{
    const KVID& id = KVID::GetSingleton();
    if (rule.GetIdentifier() == id.simple_fsm_create ||
        rule.GetAttributeValueAsString(id.name_include_string).IsEmpty())
        return &lists.global;
    return instance.objectType != MOVABLE_NONE ? &lists.OfType(instance.objectType) : nullptr;
}

}  // namespace

std::unique_ptr<CFSMInstance> BuildFSMInstance(const CKvScriptTreeNode& rule,
                                               const CKvArray<CMovable>& movables,
                                               const CTemplateList& templates)
{
    const KVID& id = KVID::GetSingleton();
    TKvString<char> pattern = rule.GetAttributeValueAsString(id.name_include_string);
    pattern.ToLower();
    auto instance = std::make_unique<CFSMInstance>();
    instance->fsmName = rule.GetAttributeValueAsString(id.fsm_name);

    CTexts excluded;
    CContentCount count;
    for (int i = 0; i < rule.GetChildCount(); ++i) {
        if (!ReadRulePart(*rule.GetChild(i), templates, *instance, excluded, count)) {
            std::fprintf(stderr,
                         "ERROR : rule '%s' holds more than %lld parameters and sub-objects\n",
                         instance->fsmName.GetText(), static_cast<long long>(CContentCount::kMax));
            return nullptr;
        }
    }
    if (!pattern.IsEmpty() && !BindObjects(*instance, pattern, excluded, movables))
        return nullptr;
    return instance;
}

bool ResolveGameRules(const CKvScriptTreeNode& root, const CKvArray<CMovable>& movables,
                      const CTemplateList& templates, CFSMInstanceLists& instances)
{
    static const CKvIdentifier s_boundRule("fsm_create");  // the vocabulary lacks this one
    for (int i = 0; i < root.GetChildCount(); ++i) {
        const CKvScriptTreeNode& rule = *root.GetChild(i);
        if (rule.GetIdentifier() != KVID::GetSingleton().simple_fsm_create &&
            rule.GetIdentifier() != s_boundRule)
            continue;
        std::unique_ptr<CFSMInstance> instance = BuildFSMInstance(rule, movables, templates);
        if (instance == nullptr)
            return false;
        if (CKvArray<CFSMInstance*>* list = ChooseList(rule, *instance, instances)) {
            list->Add(instance.get());
            static_cast<void>(instance.release());  // the list's own now
        }
    }
    return true;
}
