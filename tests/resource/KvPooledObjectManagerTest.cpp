#include "resource/KvPooledObjectManager.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <random>
#include <vector>

#include "tests/resource/KvTestObjects.h"

namespace {

constexpr std::array<const char*, 2> kPools = {"global", "cellar"};

/// What a pool should hold: its list, and what is found by name.
struct CModelPool
{
    std::vector<CEntity*> list;
    std::map<CKvIdentifier, CEntity*> named;

    CEntity* Find(const CKvIdentifier& name) const
    {
        const auto found = named.find(name);
        return found != named.end() ? found->second : nullptr;
    }

    void Unname(CEntity* entity)
    {
        if (Find(entity->GetIdentifier()) == entity)
            named.erase(entity->GetIdentifier());
    }
};

class KvPooledObjectManagerTest : public testing::Test
{
protected:
    std::size_t Random(std::size_t bound) { return m_random() % bound; }

    std::mt19937 m_random{20240229};
};

TEST_F(KvPooledObjectManagerTest, HoldsWhatStandardContainersHold)
{
    constexpr int kNames = 40;  // few, so that names are taken often
    std::vector<CKvIdentifier> names;
    names.reserve(kNames);
    for (int n = 0; n < kNames; ++n)
        names.emplace_back(std::to_string(n).c_str());
    std::array<CModelPool, 2> model;
    CEntityManager manager;
    for (int step = 0; step < 4000; ++step) {
        const std::size_t p = Random(2);
        const CKvIdentifier pool(kPools[p]);
        const CKvIdentifier name = names[Random(names.size())];
        std::vector<CEntity*>& list = model[p].list;
        const std::size_t what = Random(100);
        if (what < 35 || list.empty()) {
            list.push_back(new CEntity(kPools[p], name));
            model[p].named.emplace(name, list.back());
            ASSERT_FALSE(manager.ObjectAlreadyExists(list.back()));
            manager.AddObject(pool, list.back());
            manager.AddObject(pool, list.back());  // once is enough
        } else if (what < 99) {
            CEntity* const entity = list[Random(list.size())];
            CKvManaged* object = entity;
            ASSERT_TRUE(manager.ObjectAlreadyExists(object));
            model[p].Unname(entity);
            if (what < 65) {
                manager.RenameObject(object, what < 60 ? name : object->GetIdentifier());
                model[p].named.emplace(object->GetIdentifier(), entity);
            } else if (what < 80) {
                manager.RemoveObject(object);
                ASSERT_FALSE(manager.ObjectAlreadyExists(object));
                std::erase(list, entity);
                delete object;
            } else {
                manager.DestroyObject(object);
                std::erase(list, entity);
                ASSERT_EQ(object, nullptr);
            }
        } else {
            manager.Clear(pool);
            model[p] = {};
        }
        ASSERT_EQ(CEntity::s_living.size(), model[0].list.size() + model[1].list.size());
        for (std::size_t q = 0; q < 2; ++q) {
            for (const CKvIdentifier& each : names) {
                ASSERT_EQ(manager.FindObject(CKvIdentifier(kPools[q]), each), model[q].Find(each));
            }
            const CKvObjectPool* held = manager.FindPool(CKvIdentifier(kPools[q]));
            ASSERT_EQ(held != nullptr ? static_cast<std::size_t>(held->GetObjectCount()) : 0,
                      model[q].list.size());
            for (std::size_t i = 0; i < model[q].list.size(); ++i)
                ASSERT_EQ(held->GetObject(static_cast<int>(i)), model[q].list[i]);
        }
    }
}

TEST_F(KvPooledObjectManagerTest, CallsHooksAndObjectsInOrder)
{
    CEntity::s_log.clear();
    CEntityManager manager;
    manager.Initialize();
    for (const char* name : {"b1", "b2"})
        manager.Make("b", name);
    for (const char* name : {"g1", "g2"})
        manager.Make("global", name);
    CEntity::s_log += " |";
    manager.Clear(CKvIdentifier("b"));
    manager.Clear(CKvIdentifier("nowhere"));
    manager.Make("c", "c1");
    CEntity::s_log += " |";
    manager.Clear(CKvIdentifier("Global"));
    EXPECT_EQ(manager.FindPoolIndex(CKvIdentifier("global")), 1);
    manager.Release();
    EXPECT_EQ(CEntity::s_log,
              " OnInitialize=0,0 OnInitialized=1,1 | b1 b2 ~b1 ~b2 | g1 g2 ~g1 ~g2"
              " OnRelease=2,1 c1 ~c1 OnReleased=0,0");
}

/// Objects that, while they are released and deleted, do anything to others and to whole pools.
TEST_F(KvPooledObjectManagerTest, PutsUpWithWhatObjectsDoWhileTheyGo)
{
    constexpr std::array<const char*, 4> kNames = {"a", "b", "c", "d"};
    for (int round = 0; round < 500; ++round) {
        CEntityManager manager;
        manager.Initialize();
        std::vector<CEntity*> removed;
        int actions = 0;
        std::function<void()> act;
        const auto make = [&] {
            CEntity* const entity = manager.Make(kPools[Random(2)], kNames[Random(kNames.size())]);
            entity->onRelease = entity->onDelete = [&act, entity] {
                EXPECT_EQ(entity->releaseCount, 1);
                act();
            };
        };
        act = [&] {
            if (++actions > 40 || CEntity::s_living.empty())
                return;
            const std::size_t what = Random(12);
            CEntity* const other = CEntity::s_living[Random(CEntity::s_living.size())];
            if (what < 4 && manager.ObjectAlreadyExists(other)) {
                manager.Destroy(other);
            } else if (what < 6 && manager.ObjectAlreadyExists(other) && other->releaseCount == 0) {
                manager.RemoveObject(other);
                removed.push_back(other);
            } else if (what < 8) {
                manager.Rename(other, kNames[Random(kNames.size())]);
            } else if (what < 10) {
                make();
            } else {
                what == 10 ? manager.Clear() : manager.Clear(CKvIdentifier(kPools[Random(2)]));
            }
        };
        for (int i = 0; i < 12; ++i)
            make();
        manager.Destroy(CEntity::s_living[Random(12)]);
        manager.Clear(CKvIdentifier(kPools[1]));
        EXPECT_LE(manager.GetPoolCount(), 2) << "a pool twice";
        manager.Release();
        ASSERT_TRUE(std::is_permutation(removed.begin(), removed.end(), CEntity::s_living.begin(),
                                        CEntity::s_living.end()));
        for (CEntity* entity : removed) {
            entity->onDelete = [] {};
            delete entity;
        }
    }
}

TEST_F(KvPooledObjectManagerTest, ObjectsAtOddsWithTheirPoolAreStillDestroyedOnce)
{
    CEntityManager manager;
    CEntity stray("nowhere", CKvIdentifier("stray"));
    CKvManaged* object = &stray;
    manager.DestroyObject(object);
    EXPECT_EQ(object, &stray);
    EXPECT_EQ(stray.releaseCount, 1);

    CEntity* const first = manager.Make("a", "first");
    CEntity* const second = manager.Make("a", "second");
    object = new CEntity("a", CKvIdentifier("added to another pool than it says"));
    manager.AddObject(CKvIdentifier("b"), object);
    manager.DestroyObject(object);
    EXPECT_EQ(manager.GetObjectCount(manager.FindPoolIndex(CKvIdentifier("b"))), 0);

    first->SetIdentifier(CKvIdentifier("named behind the pool's back"));
    second->SetIdentifier(CKvIdentifier("this one too"));
    manager.Destroy(first);
    EXPECT_EQ(manager.FindObject(CKvIdentifier("a"), CKvIdentifier("first")), nullptr);
    manager.Rename(second, "found");
    EXPECT_EQ(manager.FindObject(CKvIdentifier("a"), CKvIdentifier("found")), second);
}

TEST_F(KvPooledObjectManagerTest, SavesAndResetsFieldsAndListsNamesWithoutTheEditorsObjects)
{
    CEntityManager manager;
    CEntity* door = manager.Make("global", "Door");
    CEntity* camera = manager.Make("global", "@Camera");
    CEntity* nameless = manager.Make("global", "");
    CEntity* barrel = manager.Make("cellar", "barrel");
    manager.SaveVariables();
    for (CEntity* entity : {door, camera, nameless, barrel})
        entity->health = 7;
    manager.ResetVariables();
    EXPECT_EQ(camera->health, 7);
    for (CEntity* entity : {door, nameless, barrel})
        EXPECT_EQ(entity->health, 100);
    const CKvArray<TKvString<char>> names = manager.GetObjectNameArray();
    ASSERT_EQ(names.GetCount(), 2);
    EXPECT_EQ(names[0], "door");
    const CKvArray<CKvIdentifier> identifiers = manager.GetObjectIdentifierArray();
    ASSERT_EQ(identifiers.GetCount(), 1);
    EXPECT_EQ(identifiers[0], CKvIdentifier("door"));
}

}  // namespace
