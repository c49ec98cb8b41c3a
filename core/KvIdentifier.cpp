#include "core/KvIdentifier.h"

#include <cinttypes>
#include <cstdio>

#include "core/KvIdentifierManager.h"
#include "core/KvLog.h"
#include "core/KvText.h"

namespace {

void LogMissingText(std::uint64_t crc)
{
    KvLog(ELogLevel::Warning, ELogType::Identifier, 0,
          "MISSING DEBUG STRING FOR CRC64: <%016" PRIx64 ">", crc);
}

}  // namespace

TKvString<char> KvTextOfUnknownCrc64(std::uint64_t crc)
{
    char text[32];
    std::snprintf(text, sizeof text, "CRC<%8.8X%8.8X>", static_cast<unsigned int>(crc >> 32),
                  static_cast<unsigned int>(crc));
    return TKvString<char>(text);
}

CKvIdentifier::CKvIdentifier(std::uint64_t crc)
    : m_crc(crc), m_text(CKvIdentifierManager::GetInstance().FindNameForCrc64(crc))
{
}

CKvIdentifier::CKvIdentifier(std::uint64_t crc, const char* text) : m_crc(crc), m_text(text)
{
    CKvIdentifierManager::GetInstance().CheckCrc64ForUniqueness(
        text != nullptr ? text : TKvString<char>::EMPTY, false);
}

void CKvIdentifier::Set(const char* text)
{
    if (text == nullptr)
        text = TKvString<char>::EMPTY;
    const auto length = static_cast<unsigned int>(kvStrlen(text));
    m_crc = CreateCrc64_ToLower(text, length, kKvCrc64Initial);
    m_text = CKvIdentifierManager::GetInstance().Register(m_crc, text, length);
}

const char* CKvIdentifier::DebugCString() const
{
    if (const char* text = CKvIdentifierManager::GetInstance().FindNameForCrc64(m_crc))
        return text;
    LogMissingText(m_crc);
    return "<empty>";
}

TKvString<char> CKvIdentifier::DebugString() const
{
    if (const char* text = CKvIdentifierManager::GetInstance().FindNameForCrc64(m_crc))
        return TKvString<char>(text);
    LogMissingText(m_crc);
    return KvTextOfUnknownCrc64(m_crc);
}

CKvIdentifier CKvIdentifier::Append(const char* suffix) const
{
    CKvIdentifierManager& manager = CKvIdentifierManager::GetInstance();
    const char* own = manager.FindNameForCrc64(m_crc);
    const TKvString<char> joined = TKvString<char>(own) + TKvString<char>(suffix);
    manager.CheckCrc64ForUniqueness(joined.GetText(), false);
    const auto length = static_cast<unsigned int>(kvStrlen(suffix));
    return CKvIdentifier(CreateCrc64_ToLower(suffix, length, m_crc));
}
