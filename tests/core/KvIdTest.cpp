#include "core/KvId.h"

#include <gtest/gtest.h>

namespace {

struct CRow
{
    const char* text;
    CKvIdentifier KVID::*member;
};

constexpr CRow kRows[] = {
#define KV_ID(name) {#name, &KVID::name},
#define KV_ID_AS(name, text) {text, &KVID::name},
#include "core/KvIdVocabulary.inc"
};

static_assert(std::size(kRows) == 906);
static_assert(sizeof(KVID) == sizeof(void*) + 906 * sizeof(CKvIdentifier));

// Stands in the first file of the program: tests that release the register end what is built here.
TEST(KvIdTest, HoldsTheVocabularyInOrderAndRegistersItsTexts)
{
    const KVID& id = KVID::GetSingleton();
    const CKvIdentifier* expectedPlace = &id.null;
    for (const CRow& row : kRows) {
        EXPECT_EQ(&(id.*row.member), expectedPlace++) << row.text;
        EXPECT_EQ(id.*row.member, CKvIdentifier(row.text)) << row.text;
        EXPECT_EQ(kvStrcmpNoCase((id.*row.member).DebugCString(), row.text), 0);
    }
}

}  // namespace
