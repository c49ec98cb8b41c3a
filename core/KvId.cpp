#include "core/KvId.h"

namespace {

struct CWord
{
    CKvIdentifier KVID::*member;
    const char* text;
};

constexpr CWord kVocabulary[] = {
#define KV_ID(member) {&KVID::member, #member},
#define KV_ID_AS(member, text) {&KVID::member, text},
#include "core/KvIdVocabulary.inc"
};

}  // namespace

KVID::KVID()
{
    for (const CWord& word : kVocabulary)
        (this->*word.member).Set(word.text);
}

const KVID& KVID::GetSingleton()
{
    static const KVID* const s_instance = new KVID;
    return *s_instance;
}
