#include "platform/KvHostPathPosix.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <string_view>

#include "platform/KvPlatform.h"

std::string KvToHostPath(const char* path)
{
    std::string host(path);
    std::replace(host.begin(), host.end(), '\\', '/');
    return host;
}

std::string KvTemporaryPathBeside(const std::string& target)
{
    return target.substr(0, target.rfind('/') + 1) + ".kv-" +
           std::to_string(KvPlatformRandomSeed()) + ".tmp";
}

bool KvWasRefused()
{
    switch (errno) {
        case EACCES:
        case EINVAL:
        case ENAMETOOLONG:
        case ENOENT:
        case ENOSYS:
        case ENOTDIR:
        case ENOTSUP:
        case EPERM:
        case EROFS:
            return true;
        default:
            return false;
    }
}

const int CKvHostPath::kCurrentFolder = AT_FDCWD;

void CKvHostPath::Shorten(std::size_t length)
{
    std::string_view rest(m_rest, length);
    while (rest.size() >= PATH_MAX) {
        // The longest piece that the system takes and that ends before a separator.
        char piece[PATH_MAX];
        const std::size_t pieceLength = rest.substr(0, PATH_MAX).find_last_of('/');
        int next = -1;
        if (pieceLength != std::string_view::npos && pieceLength > 0) {
            piece[rest.copy(piece, pieceLength)] = '\0';
            next = openat(m_folder, piece, O_PATH | O_DIRECTORY | O_CLOEXEC);
        }
        MoveTo(next >= 0 ? next : kCurrentFolder);
        if (next < 0) {
            m_rest = "";
            return;
        }
        // What begins with a separator would start from the root again.
        rest.remove_prefix(std::min(rest.find_first_not_of('/', pieceLength), rest.size()));
        m_rest = rest.empty() ? "." : rest.data();
    }
}

void CKvHostPath::MoveTo(int folder)
{
    if (m_folder != kCurrentFolder)
        close(m_folder);
    m_folder = folder;
}
