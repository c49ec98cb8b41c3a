// The groups of a property panel.

#pragma once

#include <memory>

#include "core/KvArray.h"
#include "reflection/KvParameterGroup.h"

/// Ownership: the list owns its groups, which stay where they are until it ends. It moves but does
///            not copy.
class CKvParameterGroupList
{
public:
    CKvParameterGroupList() = default;
    CKvParameterGroupList(CKvParameterGroupList&&) noexcept = default;
    CKvParameterGroupList& operator=(CKvParameterGroupList&&) noexcept = default;
    virtual ~CKvParameterGroupList() = default;

    /// Appends a new group and gives it back.
    CKvParameterGroup* AddParameterGroup(const TKvString<char>& name);

    int GetParameterGroupCount() const { return m_groups.GetCount(); }

    /// Errors: an index out of range asserts; null in a release build.
    CKvParameterGroup* GetParameterGroup(int index) const;

private:
    CKvArray<std::unique_ptr<CKvParameterGroup>> m_groups;
};
