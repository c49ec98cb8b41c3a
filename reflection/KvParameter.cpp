#include "reflection/KvParameter.h"

#include <climits>

#include "core/KvText.h"

void CKvParameter::WriteText(const char* text, char* buffer, int size)
{
    if (buffer == nullptr || size < 1)
        return;
    (void)kvStrncpy(buffer, static_cast<unsigned int>(size), text, UINT_MAX);  // cut where it must
    buffer[size - 1] = '\0';
}
