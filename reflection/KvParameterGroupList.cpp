#include "reflection/KvParameterGroupList.h"

#include <cassert>
#include <utility>

CKvParameterGroup* CKvParameterGroupList::AddParameterGroup(const TKvString<char>& name)
{
    auto group = std::make_unique<CKvParameterGroup>(name);
    CKvParameterGroup* const added = group.get();
    m_groups.Add(std::move(group));
    return added;
}

CKvParameterGroup* CKvParameterGroupList::GetParameterGroup(int index) const
{
    const bool isInside = index >= 0 && index < GetParameterGroupCount();
    assert(isInside);
    return isInside ? m_groups[index].get() : nullptr;
}
