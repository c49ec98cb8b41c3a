#include "file/KvFileTime.h"

#include "platform/KvPlatformFolders.h"

FILETIME KvGetFileTime(const TKvString<char>& path)
{
    std::uint64_t count = 0;
    return KvPlatformFolders().fileTime(path.GetText(), count) ? KvCountToFileTime(count)
                                                               : FILETIME();
}
