// KVID: the engine's predefined vocabulary of node and attribute names. Members are named by their
// texts; KvIdVocabulary.inc lists them in order, with the few whose text is no C++ name.

#pragma once

#include "core/KvIdentifier.h"

/// One public member for each text, in the vocabulary's order: KVID::GetSingleton().entity is the
/// identifier of "entity".
///
/// Ownership: the members' texts are the manager's; after its Release() they dangle.
class KVID
{
public:
    /// The one instance, made on the first call (which registers all texts) and never destroyed.
    static const KVID& GetSingleton();

    KVID(const KVID&) = default;
    virtual ~KVID() = default;

#define KV_ID(member) CKvIdentifier member;
#define KV_ID_AS(member, text) CKvIdentifier member;
#include "core/KvIdVocabulary.inc"

private:
    KVID();
};
