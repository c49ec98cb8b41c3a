#include "reflection/KvParameterGroupList.h"

#include <utility>

#include "core/KvEntryAt.h"

CKvParameterGroup* CKvParameterGroupList::AddParameterGroup(const TKvString<char>& name)
{
    auto group = std::make_unique<CKvParameterGroup>(name);
    CKvParameterGroup* const added = group.get();
    m_groups.Add(std::move(group));
    return added;
}

CKvParameterGroup* CKvParameterGroupList::GetParameterGroup(int index) const
{
    return KvEntryAt(m_groups, index);
}
