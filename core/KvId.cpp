#include "core/KvId.h"

KVID::KVID()
{
#define KV_ID(member) member.Set(#member);
#define KV_ID_AS(member, text) member.Set(text);
#include "core/KvIdVocabulary.inc"
}

const KVID& KVID::GetSingleton()
{
    static const KVID* const s_instance = new KVID;
    return *s_instance;
}
