#include "platform/KvHostPathPosix.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <utility>

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

CKvHostPath::CKvHostPath(std::string path) : m_path(std::move(path)), m_folder(AT_FDCWD)
{
    if (m_path.size() < PATH_MAX)
        return;
    m_path.erase(m_path.find_last_not_of('/') + 1);
    while (m_path.size() - m_restStart >= PATH_MAX) {
        const std::size_t cut = m_path.rfind('/', m_restStart + PATH_MAX - 1);
        int next = -1;
        if (cut != std::string::npos && cut > m_restStart) {
            m_path[cut] = '\0';
            next = openat(m_folder, Rest(), O_PATH | O_DIRECTORY | O_CLOEXEC);
        }
        if (m_folder != AT_FDCWD)
            close(m_folder);
        m_folder = next >= 0 ? next : AT_FDCWD;
        // A rest that begins with a separator would start from the root again.
        m_restStart = next >= 0 ? m_path.find_first_not_of('/', cut + 1) : m_path.size();
    }
}

CKvHostPath::~CKvHostPath()
{
    if (m_folder != AT_FDCWD)
        close(m_folder);
}
