#include "reflection/KvRTTI.h"

#include "core/KvText.h"

namespace {

// What a record is counted as beside its name: the terminator and two 32-bit words, and of that
// the part that is there for diagnostics alone, the terminator and the word of the name.
constexpr int kRecordSize = 9;
constexpr int kDebugInfosSize = 5;

}  // namespace

constinit int CKvRTTI::m_sTotalMemoryUsage = 0;
constinit int CKvRTTI::m_sDebugInfosMemoryUsage = 0;

CKvRTTI::CKvRTTI(const char* name, const CKvRTTI* parent) : m_name(name), m_parent(parent)
{
    m_sTotalMemoryUsage += GetMemoryUsage();
    m_sDebugInfosMemoryUsage += GetDebugInfosMemoryUsage();
}

bool CKvRTTI::IsDerived(const CKvRTTI& other) const
{
    const CKvRTTI* record = this;
    while (record != nullptr && record != &other)
        record = record->m_parent;
    return record != nullptr;
}

int CKvRTTI::GetMemoryUsage() const
{
    return kvStrlen(m_name) + kRecordSize;
}

int CKvRTTI::GetDebugInfosMemoryUsage() const
{
    return kvStrlen(m_name) + kDebugInfosSize;
}
