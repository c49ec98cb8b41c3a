#include "tool/GameRules.h"

#include <cstdio>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "core/KvId.h"
#include "scripttree/KvScriptTreeNode.h"
#include "tool/TemplateReader.h"
#include "tool/TextSet.h"

namespace {

bool IsRule(const CKvScriptTreeNode& node)
{
    static const CKvIdentifier s_boundRule("fsm_create");  // the vocabulary lacks this one
    return node.GetIdentifier() == KVID::GetSingleton().simple_fsm_create ||
           node.GetIdentifier() == s_boundRule;
}

/// The text that the names of a rule's objects contain, in lower case; empty for a rule without.
TKvString<char> GetPattern(const CKvScriptTreeNode& rule)
{
    TKvString<char> pattern =
        rule.GetAttributeValueAsString(KVID::GetSingleton().name_include_string);
    pattern.ToLower();
    return pattern;
}

/// Which movables the patterns of all rules match, found in one pass over their names.
class CPatternMatches
{
public:
    /// The movables must outlive this object and stay as they are.
    CPatternMatches(const CKvScriptTreeNode& rules, const CKvArray<CMovable>& movables)
    {
        for (int i = 0; i < rules.GetChildCount(); ++i) {
            const CKvScriptTreeNode& rule = *rules.GetChild(i);
            const TKvString<char> pattern = IsRule(rule) ? GetPattern(rule) : TKvString<char>();
            m_patternOfRule.push_back(pattern.IsEmpty() ? kNone
                                                        : m_patterns.Add(pattern.GetText()));
        }
        m_matches.resize(static_cast<std::size_t>(m_patterns.GetSize()));
        for (const CMovable& movable : movables) {
            m_patterns.Search(movable.name.GetText(), [&](int pattern) {
                m_matches[static_cast<std::size_t>(pattern)].push_back(&movable);
                return true;
            });
        }
    }

    /// Those of the \a rule -th child, in the order of the movables; none for one without pattern.
    const std::vector<const CMovable*>& Of(int rule) const
    {
        const int pattern = m_patternOfRule[static_cast<std::size_t>(rule)];
        return pattern != kNone ? m_matches[static_cast<std::size_t>(pattern)] : m_noMatches;
    }

private:
    static constexpr int kNone = -1;

    CTextSet m_patterns;
    std::vector<int> m_patternOfRule;
    std::vector<std::vector<const CMovable*>> m_matches;
    std::vector<const CMovable*> m_noMatches;
};

CObjectOverride ReadOverride(const CKvScriptTreeNode& node)
{
    const KVID& id = KVID::GetSingleton();
    CObjectOverride result;
    result.objectName = node.GetAttributeValueAsString(id.name);
    result.parameters.SetGrowthStep(node.GetChildrenCountById(id.parameter));
    for (int i = 0; i < node.GetChildCount(); ++i) {
        if (node.GetChild(i)->GetIdentifier() == id.parameter)
            result.parameters.Add(ReadTemplateParameter(*node.GetChild(i)));
    }
    return result;
}

/// Reads one child of a rule into the instance or the excluded texts. False when the templates'
/// inclusions exceed their limit.
bool ReadRulePart(const CKvScriptTreeNode& child, CTemplateList& templates, CFSMInstance& instance,
                  CTextSet& excluded)
{
    const KVID& id = KVID::GetSingleton();
    const CKvIdentifier& kind = child.GetIdentifier();
    if (kind == id.excepted) {
        excluded.Add(child.GetAttributeValueAsString(id.name_include_string).GetText());
    } else if (kind == id.template_) {
        return IncludeTemplate(child, templates, instance.parameters, instance.subObjects);
    } else if (kind == id.parameter) {
        instance.parameters.Add(ReadTemplateParameter(child));
    } else if (kind == id.sub_object) {
        std::optional<CTemplateObject> object = ReadTemplateObject(child, templates);
        if (!object)
            return false;
        instance.subObjects.Add(std::move(*object));
    } else if (kind == id.entity) {
        instance.overrides.Add(ReadOverride(child));
    }
    return true;
}

void PrintConflict(const CFSMInstance& instance, const CKvScriptTreeNode& rule,
                   const CMovable& movable)
{
    const TKvString<char>& last = instance.objectNames[instance.objectNames.GetCount() - 1];
    std::fprintf(stderr,
                 "ERROR : fsm '%s' (type='%s') is affecting two objects with different types "
                 "1:'%s' vs. 2:'%s'\n",
                 GetPattern(rule).GetText(), instance.fsmName.GetText(), last.GetText(),
                 movable.name.GetText());
    std::fflush(stderr);
}

/// Binds the instance to the candidates whose names contain none of the excluded texts. False after
/// the message when they are of two types.
bool BindObjects(CFSMInstance& instance, const CKvScriptTreeNode& rule,
                 const std::vector<const CMovable*>& candidates, CTextSet& excluded)
{
    if (excluded.GetSize() == 0)  // else few may be left
        instance.objectNames.SetGrowthStep(static_cast<int>(candidates.size()));
    for (const CMovable* movable : candidates) {
        if (excluded.OccursIn(movable->name.GetText()))
            continue;
        if (instance.objectType != MOVABLE_NONE && instance.objectType != movable->type) {
            PrintConflict(instance, rule, *movable);
            return false;
        }
        instance.objectType = movable->type;
        instance.objectNames.Add(movable->name);
    }
    return true;
}

/// Resolves one rule. Null after one line on standard error when it binds objects of two types or
/// includes more than the templates' limit.
std::unique_ptr<CFSMInstance> BuildFSMInstance(const CKvScriptTreeNode& rule,
                                               const std::vector<const CMovable*>& candidates,
                                               CTemplateList& templates)
{
    const KVID& id = KVID::GetSingleton();
    auto instance = std::make_unique<CFSMInstance>();
    instance->fsmName = rule.GetAttributeValueAsString(id.fsm_name);
    instance->parameters.SetGrowthStep(rule.GetChildrenCountById(id.parameter));
    instance->subObjects.SetGrowthStep(rule.GetChildrenCountById(id.sub_object));
    instance->overrides.SetGrowthStep(rule.GetChildrenCountById(id.entity));

    CTextSet excluded;
    for (int i = 0; i < rule.GetChildCount(); ++i) {
        if (!ReadRulePart(*rule.GetChild(i), templates, *instance, excluded)) {
            std::fprintf(stderr, "ERROR : rule '%s' includes too many parameters and sub-objects\n",
                         instance->fsmName.GetText());
            return nullptr;
        }
    }
    return BindObjects(*instance, rule, candidates, excluded) ? std::move(instance) : nullptr;
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

bool ResolveGameRules(const CKvScriptTreeNode& root, const CKvArray<CMovable>& movables,
                      CTemplateList& templates, CFSMInstanceLists& instances)
{
    const CPatternMatches matches(root, movables);
    for (int i = 0; i < root.GetChildCount(); ++i) {
        const CKvScriptTreeNode& rule = *root.GetChild(i);
        if (!IsRule(rule))
            continue;
        std::unique_ptr<CFSMInstance> instance = BuildFSMInstance(rule, matches.Of(i), templates);
        if (instance == nullptr)
            return false;
        if (CKvArray<CFSMInstance*>* list = ChooseList(rule, *instance, instances)) {
            list->Add(instance.get());
            static_cast<void>(instance.release());  // the list's own now
        }
    }
    return true;
}
