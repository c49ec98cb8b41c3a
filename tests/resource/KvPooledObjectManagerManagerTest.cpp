#include "resource/KvPooledObjectManagerManager.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "tests/resource/KvTestObjects.h"

namespace {

TEST(KvPooledObjectManagerManagerTest, ListsManagersAndFindsAcrossThem)
{
    CKvPooledObjectManagerManager& registry = CKvPooledObjectManagerManager::GetInstance();
    CEntityManager doors;
    {
        CEntityManager lamps;
        lamps.Initialize();
        doors.Initialize();
        registry.AddManager(&lamps);
        CEntity* lamp = lamps.Make("global", "lamp");
        doors.Make("global", "lamp");
        CEntity* door = doors.Make("cellar", "door");
        EXPECT_EQ(registry.FindObject(CKvIdentifier("global"), CKvIdentifier("lamp")), lamp);
        EXPECT_EQ(registry.FindObject(CKvIdentifier("cellar"), CKvIdentifier("door")), door);
        EXPECT_EQ(registry.FindObject(CKvIdentifier("global"), CKvIdentifier("door")), nullptr);
        EXPECT_EQ(registry.GetAllObjectIdentifierArray().GetCount(), 3);  // lamps counts twice

        // Whoever asks the registry while a manager ends must not meet that manager.
        lamp->onDelete = [&] {
            EXPECT_EQ(registry.FindManagerByObjectType(CKvIdentifier("other")), nullptr);
        };
    }
    EXPECT_EQ(registry.GetManagerCount(), 1) << "a manager that ends leaves without Release()";
    registry.DestroyManager(&doors);
    EXPECT_EQ(registry.GetManagerCount(), 0);
    EXPECT_TRUE(CEntity::s_living.empty());
}

TEST(KvPooledObjectManagerManagerTest, MakesNamesThatTheTopPoolDoesNotHave)
{
    CKvPooledObjectManagerManager& registry = CKvPooledObjectManagerManager::GetInstance();
    const auto generate = [&](const CKvIdentifier& base) {
        const CKvIdentifier made = registry.GenerateIdentifierSuffix(base);
        EXPECT_EQ(made, CKvIdentifier(made.DebugCString()));
        return std::string(made.DebugCString());
    };
    CEntityManager lamps;
    CEntityManager doors;
    lamps.Initialize();
    doors.Initialize();
    const CKvIdentifier torch("Torch");
    lamps.Make("global", "torch_001");
    doors.Make("global", "torch_002");
    doors.Make("cellar", "torch_003");
    EXPECT_EQ(generate(torch), "torch_003");
    registry.SetTopPoolIdentifier(CKvIdentifier("cellar"));
    EXPECT_EQ(generate(torch), "torch_001");
    registry.SetTopPoolIdentifier(CKvIdentifier("global"));

    for (int n = 1; n <= 999; ++n) {
        char name[16];
        std::snprintf(name, sizeof name, "gem_%03d", n);
        lamps.Make("global", name);
    }
    EXPECT_EQ(generate(CKvIdentifier("gem")), "gem_1000");
    EXPECT_EQ(generate(CKvIdentifier(0x123456789ABCDEFU)), "crc<0123456789abcdef>_001");
}

}  // namespace
