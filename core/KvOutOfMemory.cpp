#include "core/KvOutOfMemory.h"

namespace {

thread_local int s_count = 0;

}  // namespace

void KvNoteOutOfMemory()
{
    ++s_count;
}

int KvGetOutOfMemoryCount()
{
    return s_count;
}
