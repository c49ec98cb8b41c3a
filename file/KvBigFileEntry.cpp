#include "file/KvBigFileEntry.h"

#include <utility>

#include "core/KvIdentifier.h"
#include "core/KvIdentifierManager.h"

CKvBigFileEntry::CKvBigFileEntry(std::uint64_t crc, TKvString<char> name, int absolutePos, int size)
    : m_crc(crc), m_name(std::move(name)), m_absolutePos(absolutePos), m_size(size)
{
}

CKvBigFileEntry::~CKvBigFileEntry() = default;

TKvString<char> CKvBigFileEntry::GetName() const
{
    const char* text = CKvIdentifierManager::GetInstance().FindNameForCrc64(m_crc);
    return text != nullptr ? TKvString<char>(text) : KvTextOfUnknownCrc64(m_crc);
}
