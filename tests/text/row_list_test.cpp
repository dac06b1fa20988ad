#include "text/row_list.h"

#include "text/fold.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace larkspin {
namespace {

TEST(RowList, StaysLikeAPlainVectorThroughRandomChanges) {
    for (const bool sorted : {false, true}) {
        std::mt19937 random(11);
        const auto below = [&random](std::size_t end) { return static_cast<int>(random() % end); };
        const auto word = [&below] {
            constexpr const char* heads[] = {"a", "A", "ä", "Ä", "_", "\xFF", "a ", ""};
            return heads[below(8)] + std::to_string(below(300));
        };
        RowList list(sorted ? RowList::Order::sorted : RowList::Order::ofAddition);
        std::vector<std::string> model;
        int current = -1;
        for (int step = 0, walk = 0; step < 16000; ++step, ++walk) {
            if (below(8) < (step / 4000 % 2 == 0 ? 6 : 2)) { // grows and shrinks by turns
                const std::string text = word();
                const auto place = std::upper_bound(sorted ? model.begin() : model.end(),
                                                    model.end(), text, lessFolded);
                current += place - model.begin() <= current;
                model.insert(place, text);
                ASSERT_TRUE(list.add(text));
            } else {
                const int index = below(model.size() + 2) - 1; // outside the list at times
                list.removeAt(index);
                if (index >= 0 && index < std::ssize(model)) {
                    model.erase(model.begin() + index);
                    current = index == current ? -1 : current - (index < current);
                }
            }
            walk = below(4) == 0 ? below(model.size() + 2) : walk;
            const bool inside = walk < std::ssize(model);
            if (below(16) == 0) {
                ASSERT_EQ(list.setCurrentIndex(walk), inside);
                current = inside ? walk : current;
            }
            ASSERT_EQ(list.currentIndex(), current);
            ASSERT_EQ(list.row(walk), inside ? model[static_cast<std::size_t>(walk)] : "");
            if (step % 16 < 2) {
                const std::string asked = word();
                ASSERT_EQ(list.contains(asked), std::ranges::any_of(model, [&](auto& row) {
                              return equalFolded(row, asked);
                          }));
            }
        }
    }
}

TEST(RowList, RefusesRowsPastItsLimitAndNothingElseChanges) {
    for (const auto order : {RowList::Order::ofAddition, RowList::Order::sorted}) {
        RowList list(order);
        for (int number = 0; number < 32767; ++number)
            ASSERT_TRUE(list.add("row " + std::to_string(number)));
        list.setCurrentIndex(4711);
        const std::string current(list.currentRow());
        EXPECT_FALSE(list.contains("a new one") || list.add("a new one") ||
                     list.add(Row("a new one")) || list.contains("a new one"));
        EXPECT_EQ(list.count(), 32767);
        list.removeAt(0);
        EXPECT_EQ(list.currentRow(), current);
        EXPECT_TRUE(list.add("a new one") && list.contains("A new one"));
    }
}

} // namespace
} // namespace larkspin
