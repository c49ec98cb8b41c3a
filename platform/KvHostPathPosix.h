// Paths on their way into the system calls of this folder's sources, not for others.

#pragma once

#include <string>

struct CKvFolderOperations;

/// The host's own folder operations.
extern const CKvFolderOperations kKvHostFolders;

/// The path with both separators turned into the host's.
std::string KvToHostPath(const char* path);

/// The path of a file that is not there, in the folder of \a target. Its name does not build on the
/// target's, which may be as long as names can be.
std::string KvTemporaryPathBeside(const std::string& target);

/// How many names are tried for a temporary entry before its maker gives up.
inline constexpr int kKvTemporaryNameTries = 100;

/// A path of any length as the system takes it: a folder to start from and a rest that is short
/// enough. For the calls whose names end in "at".
class CKvHostPath
{
public:
    /// \a path is a host path.
    explicit CKvHostPath(std::string path);
    CKvHostPath(const CKvHostPath&) = delete;
    CKvHostPath& operator=(const CKvHostPath&) = delete;
    ~CKvHostPath();

    int Folder() const { return m_folder; }

    /// Empty, so that calls fail as for an absent file, when a folder on the way is not there.
    const char* Rest() const { return m_path.c_str() + m_restStart; }

private:
    std::string m_path;
    std::size_t m_restStart = 0;
    int m_folder;
};
