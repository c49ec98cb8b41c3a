#include "core/KvIdentifierManager.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "core/KvIdentifier.h"
#include "core/KvSaltedHash.h"

namespace {

using Crcs = std::vector<std::uint64_t>;

class KvIdentifierManagerTest : public testing::Test
{
protected:
    void SetUp() override { m_manager.Release(); }
    void TearDown() override { m_manager.Release(); }

    void Insert(const Crcs& crcs)
    {
        for (const std::uint64_t crc : crcs)
            EXPECT_TRUE(m_manager.Insert(CKvIdentifierHashEntry("x", crc))) << crc;
    }

    Crcs InSlotOrder()
    {
        CKvArray<const CKvIdentifierHashEntry*> entries;
        m_manager.ListInSlotOrder(entries);
        Crcs crcs;
        for (const CKvIdentifierHashEntry* entry : entries)
            crcs.push_back(entry->crc);
        return crcs;
    }

    CKvIdentifierManager& m_manager = CKvIdentifierManager::GetInstance();
};

TEST_F(KvIdentifierManagerTest, TheFirstTextOfAValueStays)
{
    const std::uint64_t entity = 0xDDCE3513DB69AB0D;
    EXPECT_TRUE(m_manager.Insert(CKvIdentifierHashEntry("Impostor", entity)));
    EXPECT_FALSE(m_manager.Insert(CKvIdentifierHashEntry("late", entity)));
    m_manager.CheckCrc64ForUniqueness("entity", false);
    EXPECT_STREQ(CKvIdentifier("entity").DebugCString(), "Impostor");

    EXPECT_TRUE(m_manager.Insert(CKvIdentifierHashEntry("", 5)));
    EXPECT_STREQ(m_manager.FindNameForCrc64(5), "");
    EXPECT_EQ(InSlotOrder().size(), 2U);

    m_manager.Release();
    EXPECT_EQ(m_manager.FindNameForCrc64(5), nullptr);
    EXPECT_STREQ(CKvIdentifier("entity").DebugCString(), "entity");
}

TEST_F(KvIdentifierManagerTest, ProbingGoesUpFromTheLowBitsAndWrapsRound)
{
    Insert({0x100000007, 255, 511, 0, 7, 8});
    EXPECT_EQ(InSlotOrder(), (Crcs{511, 0, 0x100000007, 7, 8, 255}));
}

TEST_F(KvIdentifierManagerTest, The65thEntryDoublesTheTableAndMovesTheOthersInSlotOrder)
{
    // Of 256 slots, 511 takes the last and 1023 wraps round to slot 0; 256 shares slot 1 with 1.
    Insert({511, 1023, 257, 1});
    Crcs filling;
    for (std::uint64_t crc = 10; crc < 70; ++crc)
        filling.push_back(crc);
    Insert(filling);
    Crcs expected = {1023, 257, 1};
    expected.insert(expected.end(), filling.begin(), filling.end());
    expected.push_back(511);
    EXPECT_EQ(InSlotOrder(), expected);

    // Of 512 slots, 1023 moves first and takes the last; 511 now wraps round; 257 has its own.
    Insert({70});
    expected = {511, 1};
    expected.insert(expected.end(), filling.begin(), filling.end());
    expected.insert(expected.end(), {70, 257, 1023});
    EXPECT_EQ(InSlotOrder(), expected);
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
