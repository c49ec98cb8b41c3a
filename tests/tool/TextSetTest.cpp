#include "tool/TextSet.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>
#include <string>

namespace {

TEST(TextSetTest, FindsWhatSearchingForEachTextFinds)
{
    std::mt19937 random(7);
    const auto makeText = [&](unsigned maxLength, unsigned bytes) {
        std::string text(random() % (maxLength + 1), '\0');
        for (char& c : text)
            c = static_cast<char>(1 + random() % bytes);
        return text;
    };
    // Few bytes make long suffixes, many make nodes with more children than are listed.
    for (const unsigned bytes : {2U, 9U, 255U}) {
        CTextSet set;
        std::map<std::string, int> texts;
        for (int i = 0; i < 600; ++i) {
            const std::string text = makeText(4, bytes);
            const int number = set.Add(text);
            ASSERT_EQ(texts.try_emplace(text, number).first->second, number);
        }
        for (int i = 0; i < 300; ++i) {
            const std::string name = makeText(40, bytes);
            std::set<int> expected;
            for (const auto& [text, number] : texts) {
                if (!name.empty() && name.find(text) != std::string::npos)
                    expected.insert(number);
            }
            std::multiset<int> found;
            set.Search(name, [&](int text) { return found.insert(text), true; });
            ASSERT_EQ(std::multiset<int>(expected.begin(), expected.end()), found);
        }
    }
}

}  // namespace
