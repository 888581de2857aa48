#include "exchange/NumberIndex.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <random>

namespace exchange {
namespace {

/// Compares the index with a map, at the numbers of the entries and beside them.
void expectLikeAMap(const std::vector<std::pair<int, int>>& entries) {
    std::map<int, std::vector<int>> expected;
    for (const auto& [number, row] : entries) expected[number].push_back(row);
    const NumberIndex index(entries);
    for (const auto& entry : entries)
        for (const int beside : {-1, 0, 1}) {
            const auto number = static_cast<int>(static_cast<unsigned>(entry.first) + static_cast<unsigned>(beside));
            const auto rows = index.at(number);
            const auto found = expected.find(number);
            ASSERT_EQ(std::vector(rows.begin(), rows.end()),
                      found == expected.end() ? std::vector<int>{} : found->second);
            ASSERT_EQ(index.first(number), rows.empty() ? -1 : rows.front());
        }
}

TEST(NumberIndex, FindsTheRowsOfDenseAndOfScatteredNumbersInTheirOrder) {
    std::mt19937 random(7);
    for (const int width : {50, 3000, std::numeric_limits<int>::max()}) {
        std::uniform_int_distribution<int> number(width < 100 ? -width : 2, width);
        std::vector<std::pair<int, int>> entries;
        for (int row = 0; row < 400; ++row) entries.emplace_back(number(random), row);
        expectLikeAMap(entries);
    }
}

TEST(NumberIndex, TakesTheLargestAndSmallestNumbersAndNone) {
    constexpr int kLow = std::numeric_limits<int>::min(), kHigh = std::numeric_limits<int>::max();
    expectLikeAMap({{kHigh, 0}, {kLow, 1}, {0, 2}, {kLow, 3}});
    expectLikeAMap({{kHigh, 0}, {kHigh - 1, 1}});
    EXPECT_EQ(NumberIndex().first(0), -1);
    EXPECT_TRUE(NumberIndex().at(kLow).empty());
}

}  // namespace
}  // namespace exchange
