// What decides whether a transition fires. Game code derives from it.

#pragma once

#include "core/KvString.h"

class CKvScriptTreeNode;

/// Virtual functions stand in the documented slot order; the trigger string is the only field.
class CKvTrigger
{
public:
    explicit CKvTrigger(const TKvString<char>& triggerString) : m_triggerString(triggerString) {}
    CKvTrigger(const CKvTrigger&) = default;
    CKvTrigger& operator=(const CKvTrigger&) = default;
    virtual ~CKvTrigger();

    /// For what a trigger reads from a document: the loader of a machine hands over the
    /// transition's node. Does nothing here.
    virtual void Initialize(CKvScriptTreeNode* node);

    /// Asked at each update of the state that holds the transition, until one fires. The same rules
    /// as for CKvAction::Execute() hold.
    virtual bool IsTriggered() = 0;

    const TKvString<char>& GetTriggerString() const { return m_triggerString; }

    /// Replaces the trigger string, whatever the name says.
    void GetTriggerString(const TKvString<char>& triggerString) { m_triggerString = triggerString; }

private:
    TKvString<char> m_triggerString;
};
