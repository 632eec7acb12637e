#include "editing/RankSet.h"

#include <gtest/gtest.h>

#include <iterator>
#include <random>
#include <set>

namespace {

// Sparse and dense sets of sizes with one to four levels, against the standard library's.
TEST(RankSet, FindsNeighboursAsAnOrderedSetDoes) {
    for (const std::uint32_t size : {2u, 63u, 64u, 65u, 4096u, 4097u, 300000u}) {
        std::mt19937 random(size);
        RankSet ranks(size);
        std::set<std::uint32_t> expected;
        for (int step = 0; step < 4000; ++step) {
            const bool fill = step % 1000 < 600;  // and empty again
            const auto rank = static_cast<std::uint32_t>(random() % size);
            if (fill || expected.empty()) {
                ranks.Insert(rank);
                expected.insert(rank);
            } else {
                const auto victim = expected.lower_bound(rank);
                const std::uint32_t gone = victim == expected.end() ? *expected.begin() : *victim;
                ranks.Erase(gone);
                expected.erase(gone);
            }
            const auto from = static_cast<std::uint32_t>(random() % size);
            const auto next = expected.upper_bound(from);
            const auto notBelow = expected.lower_bound(from);
            if (next != expected.end()) {
                ASSERT_EQ(ranks.Next(from), *next) << size << " from " << from;
            }
            if (notBelow != expected.begin()) {
                ASSERT_EQ(ranks.Previous(from), *std::prev(notBelow)) << size;
            }
        }
        ranks.Clear();
        ranks.Insert(size - 1);
        ASSERT_EQ(ranks.Next(0), size - 1);
    }
}

}  // namespace
