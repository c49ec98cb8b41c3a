#include "core/KvIdentifierManager.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "core/KvIdentifier.h"
#include "core/KvSaltedHash.h"

namespace {

using Crcs = std::vector<std::uint64_t>;

TEST(KvIdentifierManagerTest, TheFirstTextOfAValueStays)
{
    const CKvIdentifierHashEntry impostor("Impostor", 0xDDCE3513DB69AB0D);
    CKvIdentifierManager::GetInstance().Release();
    EXPECT_TRUE(CKvIdentifierManager::GetInstance().Insert(impostor));
    EXPECT_STREQ(CKvIdentifier("entity").DebugCString(), "Impostor");
}

TEST(KvIdentifierManagerTest, SlotsAreProbedUpwardsAndDoubleWhenTheTableIsAQuarterFull)
{
    CKvIdentifierManager& manager = CKvIdentifierManager::GetInstance();
    manager.Release();
    const auto insert = [&](std::uint64_t crc) { return manager.Insert({"text", crc}); };
    // Of 256 slots, 511 takes the last and 1023 wraps round to slot 0; 257 and 1 share slot 1.
    Crcs expected = {511, 1};
    for (const std::uint64_t crc : {511U, 1023U, 257U, 1U})
        EXPECT_TRUE(insert(crc));
    for (std::uint64_t crc = 10; crc < 70; ++crc) {
        EXPECT_TRUE(insert(crc));
        expected.push_back(crc);
    }
    // The 65th insertion doubles the table even when it is refused. Of 512 slots, 1023 moves first
    // and takes the last; 511 now wraps round; 257 has its own.
    EXPECT_FALSE(insert(1));
    expected.insert(expected.end(), {257, 1023});
    CKvArray<const CKvIdentifierHashEntry*> entries;
    manager.ListInSlotOrder(entries);
    Crcs crcs;
    for (const CKvIdentifierHashEntry* entry : entries)
        crcs.push_back(entry->crc);
    EXPECT_EQ(crcs, expected);
}

// Any bits of a CRC can be made equal for as many names as one likes, as it is linear.
TEST(KvSaltedHashTest, ValuesChosenToShareBitsSpreadAllTheSame)
{
    constexpr unsigned int kBits = 15;
    constexpr std::uint32_t kBuckets = 4U << kBits;  // as the register has for that many names
    for (unsigned int shift = 0; shift <= 64 - kBits; ++shift) {
        std::vector<int> load(kBuckets, 0);
        for (std::uint64_t i = 0; i < std::uint64_t{1} << kBits; ++i)
            ++load[KvSaltedHash(0x5DEECE66D ^ (i << shift)) % kBuckets];
        EXPECT_LT(*std::max_element(load.begin(), load.end()), 4096) << "shift " << shift;
    }
}

}  // namespace
