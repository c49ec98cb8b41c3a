#include "scripttree/KvNameCache.h"

void CKvNameCache::Fill(CEntry& entry, std::string_view name)
{
    m_terminated = name;
    entry.identifier.Set(m_terminated.c_str());
    entry.name = name;
}
