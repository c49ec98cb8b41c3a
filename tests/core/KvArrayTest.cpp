#include "core/KvArray.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

/// Long enough for the heap, so that a lost or doubled element shows under the sanitizers.
std::string Name(int number)
{
    return "an element of the array, number " + std::to_string(number);
}

/// May throw when copied and cannot be moved, unlike std::string.
struct CCopiedOnly
{
    explicit CCopiedOnly(int number) : name(Name(number)) {}
    CCopiedOnly(const CCopiedOnly& other) : name(other.name) {}
    CCopiedOnly& operator=(const CCopiedOnly& other) = default;
    ~CCopiedOnly() = default;

    std::string name;
};

struct CRecord
{
    int value = 0;
    CKvArray<CRecord> children;
};

CKvArray<std::string> MakeArray(int count)
{
    CKvArray<std::string> array;
    for (int i = 0; i < count; ++i)
        array.Add(Name(i));
    return array;
}

std::vector<int> GetCapacities(CKvArray<int> array, int appendCount)
{
    std::vector<int> capacities;
    for (int i = 0; i < appendCount; ++i) {
        array.Add(i);
        if (capacities.empty() || capacities.back() != array.GetCapacity())
            capacities.push_back(array.GetCapacity());
    }
    return capacities;
}

}  // namespace

TEST(KvArrayTest, GrowsFromTheGrowthStepByAThird)
{
    EXPECT_EQ(GetCapacities({}, 50), (std::vector<int>{16, 22, 30, 41, 56}));

    CKvArray<int> array;
    array.SetGrowthStep(0);
    EXPECT_EQ(GetCapacities(array, 5), (std::vector<int>{1, 2, 4, 6}));
}

TEST(KvArrayTest, ClearingRestoresTheDefaultGrowthStep)
{
    CKvArray<int> array;
    array.SetGrowthStep(3);
    array.Add(1);
    ASSERT_EQ(array.GetCapacity(), 3);
    array.Clear();
    EXPECT_EQ(array.GetCount(), 0);
    EXPECT_EQ(array.GetCapacity(), 0);
    array.Add(1);
    EXPECT_EQ(array.GetCapacity(), 16);
}

TEST(KvArrayTest, AppendsItsOwnElementsAlsoWhenItGrows)
{
    CKvArray<std::string> moved = MakeArray(1);
    CKvArray<CCopiedOnly> copied;
    copied.Add(CCopiedOnly(0));
    for (int i = 0; i < 100; ++i) {
        moved.Add(moved[0]);
        copied.Add(copied[0]);
    }
    for (int i = 0; i <= 100; ++i) {
        ASSERT_EQ(moved[i], Name(0)) << i;
        ASSERT_EQ(copied[i].name, Name(0)) << i;
    }
}

TEST(KvArrayTest, CopiesAreIndependentAndMovesLeaveAnEmptyArray)
{
    CKvArray<std::string> original = MakeArray(20);
    CKvArray<std::string> copy = original;
    copy[3] = "changed";
    const CKvArray<std::string>& alias = copy;
    copy = alias;
    EXPECT_EQ(original[3], Name(3));
    EXPECT_EQ(copy[3], "changed");
    EXPECT_EQ(copy.GetCapacity(), 20);

    const std::string* const elements = original.GetData();
    CKvArray<std::string>& left = original;
    copy = std::move(original);
    EXPECT_EQ(copy.GetData(), elements);
    EXPECT_TRUE(left.IsEmpty());
    left.Add("usable");
    EXPECT_EQ(left.GetCapacity(), 16);

    CKvArray<std::unique_ptr<int>> unique;
    for (int i = 0; i < 20; ++i)
        unique.Add(std::make_unique<int>(i));
    EXPECT_EQ(*unique[19], 19);
}

TEST(KvArrayTest, RemovingClosesTheGapAndKeepsTheCapacity)
{
    CKvArray<std::string> array = MakeArray(5);
    array.RemoveAt(4);
    array.RemoveAt(0);
    array.RemoveAt(1);
    EXPECT_EQ(std::vector<std::string>(array.begin(), array.end()),
              (std::vector<std::string>{Name(1), Name(3)}));
    EXPECT_EQ(array.GetCapacity(), 16);
    array.RemoveLast();
    array.RemoveAt(0);
    EXPECT_TRUE(array.IsEmpty());
}

TEST(KvArrayTest, HoldsRecordsThatHoldTheirOwnKind)
{
    CRecord root;
    root.children.Add({1, {}});
    root.children[0].children.Add({2, {}});
    CRecord copy = root;
    root.children.Clear();
    EXPECT_EQ(copy.children[0].children[0].value, 2);
}
