#include "core/KvArray.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

/// Cannot be moved and may throw when copied, unlike std::string.
struct CCopiedOnly : std::string
{
    explicit CCopiedOnly(const std::string& text) : std::string(text) {}
    CCopiedOnly(const CCopiedOnly& other) = default;
    CCopiedOnly& operator=(const CCopiedOnly& other) = default;
};

/// Does the same to an array and to a vector. The elements are long enough for the heap, so that a
/// lost or doubled one shows under the sanitizers.
template <typename T>
void ExpectHoldsWhatAVectorHolds()
{
    std::mt19937 random(20240229);
    CKvArray<T> array;
    std::vector<T> model;
    for (int step = 0; step < 5000; ++step) {
        const unsigned action = random() % 64;
        const int index = model.empty() ? 0 : static_cast<int>(random() % model.size());
        if (action == 0) {
            array.Clear();
            model.clear();
        } else if (action == 1) {
            CKvArray<T> taken = std::move(array);
            array = taken;
        } else if (action < 30 || model.empty()) {
            const std::string text = "an element of the array, number " + std::to_string(step);
            array.Add(T(text));
            model.push_back(T(text));
        } else if (action < 46) {
            array.Add(array[index]);  // also when it grows
            model.push_back(T(model[static_cast<std::size_t>(index)]));
        } else {
            array.RemoveAt(index);
            model.erase(model.begin() + index);
        }
        ASSERT_TRUE(std::equal(array.begin(), array.end(), model.begin(), model.end())) << step;
    }
}

TEST(KvArrayTest, HoldsWhatAVectorHoldsAfterTheSameOperations)
{
    ExpectHoldsWhatAVectorHolds<std::string>();
    ExpectHoldsWhatAVectorHolds<CCopiedOnly>();
}

}  // namespace
