// A disk in memory, for runs that are too many for a real one. It works like the host's, without
// folders: a name is the whole path, '\' and '/' are the same.

#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/KvPlatform.h"

/// In use from its constructor to its destructor, which brings the host's own disk back. At most
/// one lives at a time. What asks the host past the table of operations (KvPlatformFileExists() and
/// KvPlatformCanCopyFile()) finds nothing.
class CKvMemoryDisk
{
public:
    CKvMemoryDisk();
    CKvMemoryDisk(const CKvMemoryDisk&) = delete;
    CKvMemoryDisk& operator=(const CKvMemoryDisk&) = delete;
    ~CKvMemoryDisk();

    /// Makes or replaces a file.
    void Write(const std::string& name, const std::string& bytes);

    /// All bytes of a file; "<absent>" when there is none.
    std::string Read(const std::string& name) const;

    /// The names of all files, in ascending order.
    std::vector<std::string> Names() const;

    /// How many streams are open.
    int GetOpenCount() const { return m_openCount; }

private:
    friend struct CKvMemoryDiskOperations;

    /// Streams keep the bytes of a file that was replaced or removed.
    std::map<std::string, std::shared_ptr<std::string>> m_files;
    int m_openCount = 0;
    int m_temporaryCount = 0;
};
