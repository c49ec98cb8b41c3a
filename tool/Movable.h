// The objects of a level that state machines can be bound to.

#pragma once

#include "core/KvArray.h"
#include "core/KvString.h"

class CKvScriptTreeNode;

/// 0 stands for no type at all.
enum EMovableType : int
{
    MOVABLE_NONE = 0,
    MOVABLE_ENTITY = 1,
    MOVABLE_DUMMY_AABB3 = 2,
    MOVABLE_DUMMY_SPHERE = 3,
    MOVABLE_PARTICLE_SYSTEM = 4,
    MOVABLE_LIGHT = 5
};

inline constexpr int kMovableTypeCount = 5;

/// One object. The name is empty when the level gives none.
struct CMovable
{
    TKvString<char> name;
    EMovableType type = MOVABLE_NONE;
};

/// What the list of movables prints for a type, and the name of its objects' nodes in the output.
const char* GetMovableTypeText(EMovableType type);

/// Appends the movables below a "level" root in document order, names as they come.
void ScanLevelMovables(const CKvScriptTreeNode& level, CKvArray<CMovable>& movables);

/// Prints one line a movable on standard output.
void PrintMovables(const CKvArray<CMovable>& movables);
