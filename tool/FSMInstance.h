// A rule of the game resolved against a level: one state machine, what it is given and which
// objects it is bound to.

#pragma once

#include <array>

#include "tool/Movable.h"
#include "tool/TemplateObject.h"

/// Parameters that one object has in place of, or besides, those of the rule.
struct CObjectOverride
{
    TKvString<char> objectName;
    CKvArray<CTemplateParameter> parameters;
};

/// Fields stand in the documented order; the destructor is the only virtual function. All objects
/// that are named have the same type.
class CFSMInstance
{
public:
    virtual ~CFSMInstance();

    TKvString<char> fsmName;
    CKvArray<TKvString<char>> objectNames;
    CKvArray<CTemplateParameter> parameters;
    CKvArray<CTemplateObject> subObjects;
    CKvArray<CObjectOverride> overrides;

    /// The type of the objects; MOVABLE_NONE when there are none.
    EMovableType objectType = MOVABLE_NONE;
};

/// All instances of a run, in the order of their rules: those that stand alone and those bound to
/// objects of each type.
///
/// Ownership: the lists own their instances.
struct CFSMInstanceLists
{
    CFSMInstanceLists() = default;
    CFSMInstanceLists(const CFSMInstanceLists&) = delete;
    CFSMInstanceLists& operator=(const CFSMInstanceLists&) = delete;
    ~CFSMInstanceLists();

    CKvArray<CFSMInstance*>& OfType(EMovableType type)
    {
        return byType[static_cast<std::size_t>(type - 1)];
    }
    const CKvArray<CFSMInstance*>& OfType(EMovableType type) const
    {
        return byType[static_cast<std::size_t>(type - 1)];
    }

    CKvArray<CFSMInstance*> global;
    std::array<CKvArray<CFSMInstance*>, kMovableTypeCount> byType;
};
