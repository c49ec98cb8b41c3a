#include "bench/KvTemporaryFolder.h"

#include <stdlib.h>

#include <filesystem>
#include <system_error>

CKvTemporaryFolder::CKvTemporaryFolder()
{
    std::error_code error;
    const std::filesystem::path base = std::filesystem::temp_directory_path(error);
    if (error)
        return;
    std::string path = (base / "kv-bench-XXXXXX").string();
    if (mkdtemp(path.data()) != nullptr)
        m_path = path;
}

CKvTemporaryFolder::~CKvTemporaryFolder()
{
    std::error_code ignored;
    if (!m_path.empty())
        std::filesystem::remove_all(m_path, ignored);
}

std::string KvMakeFolder(const std::string& parent, const std::string& name)
{
    if (parent.empty())
        return {};
    std::error_code error;
    std::string path = parent + "/" + name;
    return std::filesystem::create_directory(path, error) ? path : std::string();
}
