// Paths on their way into the system calls of this folder's sources, not for others.

#pragma once

#include <cstddef>
#include <string>
#include <utility>

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

/// Whether the call that has just failed asked for what a name, a permission or a kind of disk does
/// not allow. Anything else is a failure of the system: no space, an I/O error, no more
/// descriptors.
bool KvWasRefused();

/// A path of any length as the system takes it: a folder to start from and a rest that is short
/// enough. For the calls whose names end in "at". Allocates nothing, so that a temporary can be
/// removed when memory is short.
class CKvHostPath
{
public:
    /// \a path is a host path and must live as long as this object.
    explicit CKvHostPath(const std::string& path) : m_rest(path.c_str()) { Shorten(path.size()); }

    explicit CKvHostPath(std::string&& path) : m_path(std::move(path)), m_rest(m_path.c_str())
    {
        Shorten(m_path.size());
    }

    CKvHostPath(const CKvHostPath&) = delete;
    CKvHostPath& operator=(const CKvHostPath&) = delete;
    ~CKvHostPath() { MoveTo(kCurrentFolder); }

    int Folder() const { return m_folder; }

    /// Empty, so that calls fail as for an absent file, when a folder on the way is not there.
    const char* Rest() const { return m_rest; }

private:
    /// Where the system starts from when a call is given no folder.
    static const int kCurrentFolder;

    void Shorten(std::size_t length);

    /// Closes the folder that was started from.
    void MoveTo(int folder);

    std::string m_path;
    const char* m_rest;
    int m_folder = kCurrentFolder;
};
