// Resolves the rules of a game-rules document against a level's movables and the templates.

#pragma once

#include <memory>

#include "tool/FSMInstance.h"

class CKvScriptTreeNode;
class CTemplateList;

/// Resolves all rules below a "game_rule_list" root into the lists.
///
/// Errors: false after the message of the rule that failed; the instances before it stay.
[[nodiscard]] bool ResolveGameRules(const CKvScriptTreeNode& root,
                                    const CKvArray<CMovable>& movables,
                                    const CTemplateList& templates, CFSMInstanceLists& instances);

/// Resolves one rule.
///
/// Errors: null after one line on standard error when the rule binds objects of two types or
///         gathers more than CContentCount::kMax parameters and sub-objects.
std::unique_ptr<CFSMInstance> BuildFSMInstance(const CKvScriptTreeNode& rule,
                                               const CKvArray<CMovable>& movables,
                                               const CTemplateList& templates);
