#include "core/KvId.h"

#include <gtest/gtest.h>

namespace {

static_assert(sizeof(KVID) == sizeof(void*) + 906 * sizeof(CKvIdentifier));

// Stands in the first file of the program: tests that release the register end what is built here.
TEST(KvIdTest, RegistersTheTextsOfItsMembers)
{
    const KVID& id = KVID::GetSingleton();
    EXPECT_STREQ(id.entity.DebugCString(), "entity");
    EXPECT_STREQ(id.camera_perspective.DebugCString(), "@camera_perspective");
    EXPECT_EQ(id.null, CKvIdentifier(""));
}

}  // namespace
