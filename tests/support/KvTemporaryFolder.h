// A folder of its own for one test, under the system's temporary folder and removed at the end.

#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/KvPlatform.h"

class CKvTemporaryFolder
{
public:
    CKvTemporaryFolder()
    {
        do {
            m_path = std::filesystem::temp_directory_path() /
                     ("kv-test-" + std::to_string(KvPlatformRandomSeed()));
        } while (!std::filesystem::create_directory(m_path));
    }

    CKvTemporaryFolder(const CKvTemporaryFolder&) = delete;
    CKvTemporaryFolder& operator=(const CKvTemporaryFolder&) = delete;

    ~CKvTemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    /// The folder's own path, without separator at its end.
    std::string Path() const { return m_path.string(); }

    /// The path of something in the folder, there or not.
    std::string Path(const std::string& name) const { return (m_path / name).string(); }

    /// Makes or replaces a file and gives its path.
    std::string Write(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(m_path / name, std::ios::binary) << bytes;
        return Path(name);
    }

    /// All bytes of a file; "<absent>" when it cannot be opened.
    std::string Read(const std::string& name) const
    {
        std::ifstream file(m_path / name, std::ios::binary);
        if (!file)
            return "<absent>";
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    /// The names of all that lies in the folder, in ascending order.
    std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_path))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    std::filesystem::path m_path;
};
