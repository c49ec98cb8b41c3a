#include "system/KvDynamicLibrary.h"

#include <utility>

#include "platform/KvPlatformModules.h"

bool CKvDynamicLibrary::Initialize()
{
    if (m_module == nullptr)
        m_module = KvPlatformLoadModule(m_fileName.GetText());
    return m_module != nullptr;
}

void* CKvDynamicLibrary::GetFunctionAddress(const TKvString<char>& name) const
{
    return m_module != nullptr ? KvPlatformFindInModule(m_module, name.GetText()) : nullptr;
}

void CKvDynamicLibrary::Release()
{
    if (m_module != nullptr)
        KvPlatformReleaseModule(std::exchange(m_module, nullptr));
}
