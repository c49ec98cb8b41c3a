#include "file/KvFileHandleBigFile.h"

#include <algorithm>
#include <climits>

#include "file/KvBigFile.h"

CKvFileHandleBigFile::CKvFileHandleBigFile(CKvBigFile& owner, CKvBigFileEntry& entry)
    : m_owner(&owner), m_entry(&entry), m_next(owner.m_firstHandle)
{
    ++m_entry->m_openCount;
    owner.m_firstHandle = this;
    if (m_next != nullptr)
        m_next->m_previous = this;
}

CKvFileHandleBigFile::~CKvFileHandleBigFile()
{
    Detach();
}

const TKvString<char>& CKvFileHandleBigFile::GetName() const
{
    return m_entry != nullptr ? m_entry->GetFileName() : TKvString<char>::STR_EMPTY;
}

int CKvFileHandleBigFile::GetSize() const
{
    return m_entry != nullptr ? std::max(m_entry->GetSize(), 0) : 0;
}

bool CKvFileHandleBigFile::IsInArchive() const
{
    if (m_owner == nullptr || m_entry->GetAbsolutePos() < 0 || m_entry->GetSize() < 0)
        return false;
    return std::int64_t{m_entry->GetAbsolutePos()} + m_entry->GetSize() <= m_owner->m_archiveSize;
}

void CKvFileHandleBigFile::Detach()
{
    if (m_owner == nullptr)
        return;
    if (m_previous != nullptr)
        m_previous->m_next = m_next;
    else
        m_owner->m_firstHandle = m_next;
    if (m_next != nullptr)
        m_next->m_previous = m_previous;
    --m_entry->m_openCount;
    m_owner = nullptr;
    m_entry = nullptr;
    m_previous = nullptr;
    m_next = nullptr;
}

void CKvFileHandleBigFile::SetPos(std::int64_t position)
{
    m_position = static_cast<int>(std::clamp<std::int64_t>(position, INT_MIN, INT_MAX));
}
