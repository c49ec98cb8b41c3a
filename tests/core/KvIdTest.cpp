#include "core/KvId.h"

#include <gtest/gtest.h>

#include "core/KvIdentifierManager.h"

namespace {

struct Row
{
    const char* text;
    CKvIdentifier KVID::*member;
};

constexpr Row kRows[] = {
#define KV_ID(name) {#name, &KVID::name},
#define KV_ID_AS(name, text) {text, &KVID::name},
#include "core/KvIdVocabulary.inc"
};

// Stands in the first file of the program: tests that release the register end what is built here.
TEST(KvIdTest, HoldsTheVocabularyInOrderAndRegistersItsTexts)
{
    const KVID& id = KVID::GetSingleton();
    static_assert(std::size(kRows) == 906);
    static_assert(sizeof(KVID) == sizeof(void*) + 906 * sizeof(CKvIdentifier));

    EXPECT_TRUE(id.null.IsNull());
    EXPECT_EQ(&id.null + 905, &id.parent_point);
    EXPECT_EQ(id.entity.GetCrc64(), 0xDDCE3513DB69AB0D);
    const CKvIdentifier* expectedPlace = &id.null;
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.text);
        TKvString<char> registered(row.text);
        registered.ToLower();
        EXPECT_EQ(&(id.*row.member), expectedPlace++);
        EXPECT_EQ(id.*row.member, CKvIdentifier(row.text));
        EXPECT_STREQ((id.*row.member).DebugCString(), registered.GetText());
    }
}

}  // namespace
