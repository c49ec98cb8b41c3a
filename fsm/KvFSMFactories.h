// How game code has its own states, triggers and actions made when a machine reads a document.

#pragma once

#include <functional>
#include <memory>

#include "core/KvString.h"

class CKvAction;
class CKvFSM;
class CKvFSMState;
class CKvScriptTreeNode;
class CKvTrigger;

/// What is made of the nodes of a document. Each function may be empty and may give null; the nodes
/// are valid during the call only. What the calls do may do with the machine what an action may
/// (CKvAction::Execute()); a load goes on with the factories that it began with.
///
/// Ownership: the machine takes what they make.
struct CKvFSMFactories
{
    /// A state for a child of "state_list". It then reads its name with SerializeFrom(). Empty or
    /// null: a CKvFSMState.
    std::function<std::unique_ptr<CKvFSMState>(CKvScriptTreeNode& node, CKvFSM& fsm)> state;

    /// A trigger for the "trigger" text of a transition, whose node it then gets with Initialize().
    /// Empty: the document's transitions are dropped; null: this one is.
    std::function<std::unique_ptr<CKvTrigger>(const TKvString<char>& trigger,
                                              CKvScriptTreeNode& transition)>
        trigger;

    /// An action for an "action" child of a transition. Empty or null: no action.
    std::function<std::unique_ptr<CKvAction>(CKvScriptTreeNode& action)> action;
};
