// Resolves the rules of a game-rules document against a level's movables and the templates.

#pragma once

#include "tool/FSMInstance.h"

class CKvScriptTreeNode;
class CTemplateList;

/// Resolves all rules below a "game_rule_list" root into the lists.
///
/// Errors: false after the message of the rule that failed; the instances before it stay.
[[nodiscard]] bool ResolveGameRules(const CKvScriptTreeNode& root,
                                    const CKvArray<CMovable>& movables,
                                    const CTemplateList& templates, CFSMInstanceLists& instances);
