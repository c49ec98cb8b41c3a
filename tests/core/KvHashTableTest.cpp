#include "core/KvHashTable.h"

#include <gtest/gtest.h>

#include <deque>
#include <random>
#include <unordered_map>

#include "core/KvSipHash.h"

namespace {

struct CEntry
{
    unsigned int key = 0;
};

/// Has 2^kHashBits different hashes, whose start slots are the last ones, so that clusters wrap
/// round; with 0 all keys share one slot.
template <int kHashBits>
struct TPolicy
{
    using Key = unsigned int;

    static Key GetKey(const CEntry& entry) { return entry.key; }
    static bool MatchKey(const CEntry& entry, Key key) { return entry.key == key; }
    static int CreateHash(Key key)
    {
        return ~static_cast<int>(key * 0x9E3779B9U & ((1U << kHashBits) - 1));
    }
};

/// Does the same to a table and to a standard one; every key is looked up after each step.
template <int kHashBits>
void ExpectHoldsWhatAStandardTableHolds()
{
    constexpr unsigned int kKeys = 200;
    std::mt19937 random(20240229);
    std::deque<CEntry> entries;
    TKvHashTable<CEntry, TPolicy<kHashBits>> table(2);
    std::unordered_map<unsigned int, CEntry*> model;
    for (int step = 0; step < 3000; ++step) {
        // More keys are in use early than late, so that clusters form and then dissolve.
        CEntry* entry = &entries.emplace_back(CEntry{static_cast<unsigned int>(random() % kKeys)});
        const auto known = model.find(entry->key);
        if (static_cast<int>(random() % 3000) > step) {
            ASSERT_EQ(table.Insert(entry), model.emplace(entry->key, entry).second);
        } else if (known != model.end()) {
            ASSERT_FALSE(table.Remove(entry)) << "another entry of the same key";
            ASSERT_TRUE(table.Insert(known->second)) << "the same entry again";
            ASSERT_TRUE(table.Remove(known->second));
            model.erase(known);
        } else {
            ASSERT_FALSE(table.Remove(entry));
        }
        ASSERT_EQ(table.GetCount(), static_cast<int>(model.size()));
        for (unsigned int key = 0; key < kKeys; ++key) {
            const auto found = model.find(key);
            ASSERT_EQ(table.Find(key), found != model.end() ? found->second : nullptr) << step;
        }
    }
    table.Clear();
    EXPECT_EQ(table.GetCount(), 0);
    for (int slot = 0; slot < table.GetSlotCount(); ++slot)
        EXPECT_EQ(table.GetSlot(slot), nullptr);
}

TEST(KvHashTableTest, HoldsWhatAStandardTableHolds)
{
    ExpectHoldsWhatAStandardTableHolds<31>();
    ExpectHoldsWhatAStandardTableHolds<4>();  // long clusters of many start slots
    ExpectHoldsWhatAStandardTableHolds<0>();
}

/// The last value is that of the paper's appendix A, the others those of its reference code.
TEST(KvSipHashTest, GivesThePublishedValues)
{
    constexpr std::string_view kBytes("\0\1\2\3\4\5\6\7\10\11\12\13\14\15\16", 15);
    const auto hash = [&](std::size_t size) {
        return KvSipHash(0x0706050403020100, 0x0F0E0D0C0B0A0908, kBytes.substr(0, size));
    };
    EXPECT_EQ(hash(0), 0x726FDB47DD0E0E31);
    EXPECT_EQ(hash(8), 0x93F5F5799A932462);
    EXPECT_EQ(hash(15), 0xA129CA6149BE45E5);
}

}  // namespace
