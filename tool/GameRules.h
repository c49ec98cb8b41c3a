// Resolves the rules of a game-rules document against a level's movables and the templates.

#pragma once

#include "tool/FSMInstance.h"

class CKvScriptTreeNode;
class CTemplateList;

/// Resolves all rules below a "game_rule_list" root into the lists.
///
/// Errors: false after one line on standard error when a rule binds objects of two types or the
///         templates' inclusions exceed their limit; the instances before it stay.
[[nodiscard]] bool ResolveGameRules(const CKvScriptTreeNode& root,
                                    const CKvArray<CMovable>& movables, CTemplateList& templates,
                                    CFSMInstanceLists& instances);
