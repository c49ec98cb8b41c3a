// A folder of its own for one run of the benchmark, gone with its content when the owner goes.

#pragma once

#include <string>

class CKvTemporaryFolder
{
public:
    /// Makes the folder where the system keeps temporary files (TMPDIR, else /tmp).
    CKvTemporaryFolder();
    ~CKvTemporaryFolder();
    CKvTemporaryFolder(const CKvTemporaryFolder&) = delete;
    CKvTemporaryFolder& operator=(const CKvTemporaryFolder&) = delete;

    /// Empty when the folder could not be made.
    const std::string& Path() const { return m_path; }

private:
    std::string m_path;
};

/// Makes a folder inside an existing one and gives its path; empty when it could not be made, also
/// when \a parent is empty.
std::string KvMakeFolder(const std::string& parent, const std::string& name);
