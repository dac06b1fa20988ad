#include "text/row_list.h"

#include "text/fold.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <tuple>

namespace larkspin {
namespace {

struct ModelRow {
    std::string text;
    bool selected = false;
};

TEST(RowList, StaysLikeAPlainVectorThroughRandomChanges) {
    for (const bool sorted : {false, true}) {
        std::mt19937 random(11);
        const auto below = [&random](std::size_t end) { return static_cast<int>(random() % end); };
        RowWriter writer;
        const auto word = [&below] {
            constexpr const char* heads[] = {"a", "A", "ä", "Ä", "_", "\xFF", "a ", "", "|b", "B|"};
            return heads[below(10)] + std::to_string(below(300));
        };
        RowList list(sorted ? RowList::Order::sorted : RowList::Order::ofAddition);
        std::vector<ModelRow> model;
        int current = -1;
        std::string added;
        for (int step = 0, walk = 0; step < 16000; ++step, ++walk) {
            if (below(8) < (step / 4000 % 2 == 0 ? 6 : 2)) { // grows and shrinks by turns
                added = word();
                const auto place = std::upper_bound(
                    sorted ? model.begin() : model.end(), model.end(), added,
                    [](const auto& text, const auto& row) { return lessFolded(text, row.text); });
                current += place - model.begin() <= current;
                model.insert(place, {added});
                ASSERT_TRUE(below(2) == 0 ? list.add(added) : list.add(writer.write(added)));
            } else {
                const int index = below(model.size() + 2) - 1; // outside the list at times
                list.removeAt(index);
                if (index >= 0 && index < std::ssize(model)) {
                    model.erase(model.begin() + index);
                    current = index == current ? -1 : current - (index < current);
                }
            }
            if (const int index = below(model.size() + 2) - 1; !sorted && below(8) == 0) {
                const std::string text = word();
                list.replaceAt(index, text);
                if (index >= 0 && index < std::ssize(model))
                    model[static_cast<std::size_t>(index)].text = text;
            }
            walk = below(4) == 0 ? below(model.size() + 2) - 1 : walk;
            const bool inside = walk >= 0 && walk < std::ssize(model);
            const auto at = static_cast<std::size_t>(walk);
            if (below(16) == 0) {
                ASSERT_EQ(list.setCurrentIndex(walk), inside || walk == -1);
                current = inside || walk == -1 ? walk : current;
            }
            const int selecting = below(1000);
            if (selecting < 500) {
                list.setSelected(walk, selecting % 2 != 0);
                if (inside)
                    model[at].selected = selecting % 2 != 0;
            } else if (selecting < 504) {
                if (selecting < 502) {
                    list.clearSelection();
                } else {
                    ASSERT_EQ(list.choose(walk), inside);
                    current = inside ? walk : current;
                }
                for (ModelRow& row : model)
                    row.selected = row.selected && selecting >= 502 && !inside;
                if (selecting >= 502 && inside)
                    model[at].selected = true;
            } else if (selecting == 504 && step % 4000 < 500) {
                list.clear();
                model.clear();
                current = -1;
                continue;
            }
            ASSERT_EQ(list.count(), std::ssize(model));
            ASSERT_EQ(list.currentIndex(), current);
            ASSERT_EQ(list.row(walk), inside ? model[at].text : "");
            ASSERT_EQ(list.folded(walk), inside ? foldCase(model[at].text) : "");
            ASSERT_EQ(list.isSelected(walk), inside ? model[at].selected : false);
            ASSERT_EQ(list.selectedCount(), std::ranges::count(model, true, &ModelRow::selected));
            if (step % 16 < 2) {
                const std::string asked = step % 2 == 0 ? word() : added;
                const auto equals = std::ranges::count_if(
                    model, [&](auto& row) { return equalFolded(row.text, asked); });
                ASSERT_EQ(list.contains(asked), equals > 0);
                if (sorted)
                    ASSERT_EQ(std::ssize(list.equals(Row(asked))), equals);
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
        EXPECT_FALSE(list.contains("a new one"));
        EXPECT_FALSE(list.add("a new one"));
        EXPECT_FALSE(list.add(Row("a new one")));
        EXPECT_FALSE(list.contains("a new one"));
        EXPECT_EQ(list.count(), 32767);
        EXPECT_EQ(list.find(list.share(815)), 815);
        EXPECT_EQ(list.find(Row(list.row(815))), -1) << "another row of that text";
        list.removeAt(0);
        EXPECT_EQ(list.currentRow(), current);
        EXPECT_TRUE(list.add("a new one"));
        EXPECT_TRUE(list.contains("A new one"));
    }
}

// The bytes whose top bits a hash of words is the likeliest to lose.
TEST(RowList, TellsTextsApartThatDifferInTheTopBitsOfAFewBytes) {
    const std::string text = "some text of sixteen";
    RowList list;
    list.add(text);
    for (int changes = 1; changes < 8; ++changes) {
        std::string other = text;
        for (const auto& [bit, byte] : {std::pair{1, 7u}, {2, 11u}, {4, 15u}})
            if (changes & bit)
                other[byte] = static_cast<char>(other[byte] ^ 0x80);
        EXPECT_FALSE(list.contains(other)) << changes;
    }
}

TEST(Row, TakesTextsOfAnySizeAndOutlivesItsWriter) {
    std::vector<Row> rows;
    const std::size_t sizes[] = {0, 1, 3000, 5000, 9000, 100000};
    {
        RowWriter writer;
        for (const std::size_t size : sizes)
            rows.push_back(writer.write(std::string(size, 'X') + "| side"));
        for (int number = 0; number < 1000; ++number)
            writer.write("Row " + std::to_string(number));
    }
    for (std::size_t at = 0; at < rows.size(); ++at) {
        EXPECT_EQ(rows[at].text(), std::string(sizes[at], 'X') + "| side");
        EXPECT_EQ(rows[at].folded(), std::string(sizes[at], 'x') + "| side");
        EXPECT_EQ(rows[at].bar(), sizes[at]);
    }
    EXPECT_EQ(Row().text(), "");
    EXPECT_EQ(Row().bar(), 0u);
}

TEST(RowList, TakesManyRowsAsIfTheyWereAddedInTurn) {
    std::mt19937 random(5);
    std::vector<Row> rows;
    for (int number = 0; number <= RowList::limit; ++number)
        rows.emplace_back((random() % 2 == 0 ? "Row " : "row ") + std::to_string(random() % 9999));
    for (const auto order : {RowList::Order::sorted, RowList::Order::ofAddition}) {
        RowList added(order), assigned(order);
        assigned.add("gone");
        assigned.setCurrentIndex(0);
        assigned.setSelected(0, true);
        for (const Row& row : rows)
            added.add(row);
        assigned.assign(rows);
        EXPECT_EQ(assigned.currentIndex(), -1);
        EXPECT_EQ(assigned.selectedCount(), 0);
        ASSERT_EQ(assigned.count(), RowList::limit);
        for (int index = 0; index < RowList::limit; ++index)
            ASSERT_EQ(assigned.row(index), added.row(index)) << index;
        EXPECT_FALSE(assigned.contains("gone"));
    }
}

// A front end reads a list anew only when these change.
TEST(RowList, TellsByItsRevisionsWhatHasChanged) {
    RowList list, other;
    other.add("x");
    const std::vector<Row> three{Row("a"), Row("b"), Row("c")};
    const std::tuple<const char*, std::function<void()>, bool, bool> changes[] = {
        {"add", [&] { list.add("a"); }, true, true},
        {"assign", [&] { list.assign(three); }, true, true},
        {"choose", [&] { list.choose(1); }, false, true},
        {"choose it again", [&] { list.setCurrentIndex(1); }, false, false},
        {"select", [&] { list.setSelected(2, true); }, false, true},
        {"select it again", [&] { list.setSelected(2, true); }, false, false},
        {"unselect all", [&] { list.clearSelection(); }, false, true},
        {"remove", [&] { list.removeAt(0); }, true, true},
        {"replace", [&] { list.replaceAt(0, "z"); }, true, true},
        {"read", [&] { list.contains(list.row(0)); }, false, false},
        {"another's rows", [&] { list = other; }, true, true},
        {"the same", [&] { list = other; }, false, false},
        {"clear", [&] { list.clear(); }, true, true},
    };
    for (const auto& [what, change, rows, any] : changes) {
        const auto rowsBefore = list.rowsRevision(), before = list.revision();
        change();
        EXPECT_EQ(list.rowsRevision() != rowsBefore, rows) << what;
        EXPECT_EQ(list.revision() != before, any) << what;
    }
}

} // namespace
} // namespace larkspin
