#include "system/KvBrowser.h"

#include "platform/KvPlatformProcess.h"

void KvOpenBrowser(const char* url)
{
    KvPlatformOpenUrl(url);
}
