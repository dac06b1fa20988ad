// RowList: the list of text rows that all lists of the program are made of.
//
// Indexes count from 0. A list holds at most 32,767 rows, so that an index fits 16 bits; an
// addition past that is refused. A sorted list places each row by its folded text, ascending,
// after rows that fold to the same.
//
// The current index and the selection, of any number of rows, are independent of each other. Both
// stay with their rows when others come or go before them, and leave with them. The current index
// is -1 when there is none.
//
// Rows are shared, not copied: the same row in several lists is held once. They stand in
// blocks of bounded size, so that adding, removing and reading stay cheap at any length.
#pragma once

#include "text/row.h"
#include "text/text_set.h"

#include <bitset>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace larkspin {

class RowList {
public:
    enum class Order { ofAddition, sorted };
    static constexpr int limit = 32767;

    explicit RowList(Order order = Order::ofAddition) : order_(order) {}

    // False when the list is full.
    bool add(std::string_view text) { return !full() && add(Row(text)); }
    bool add(Row row);

    // The rows in place of those in the list, as if they were added in turn to an empty one, but
    // quicker.
    void assign(const std::vector<Row>& rows);

    // An index outside the list does nothing. Removing the current row leaves none current. A row
    // of an unsorted list can be replaced by another, which takes its place in everything.
    void removeAt(int index);
    void replaceAt(int index, std::string_view text);
    void clear();

    int count() const { return count_; }
    bool empty() const { return count_ == 0; }
    bool full() const { return count_ == limit; }

    // Outside the list: an empty text. A view ends with the next change of the list; a shared
    // row doesn't.
    std::string_view row(int index) const { return share(index).text(); }
    std::string_view folded(int index) const { return share(index).folded(); }
    const Row& share(int index) const;
    // The index at which this very row, or a copy of it, stands now; -1 when it is gone, even if
    // another row reads the same.
    int find(const Row& row) const;

    int currentIndex() const { return current_; }
    // -1 for none. False, and nothing changes, for an index outside the list.
    bool setCurrentIndex(int index);
    std::string_view currentRow() const { return row(current_); }

    // What a click does: the row becomes current, and the only one selected. False, and nothing
    // changes, for an index outside the list.
    bool choose(int index);

    // Setting does nothing outside the list.
    bool isSelected(int index) const;
    void setSelected(int index, bool selected);
    void clearSelection();
    int selectedCount() const { return selectedCount_; }

    // By these a front end sees that the list has changed. Lists of the same revision have the same
    // rows, current index and selection; lists of the same revision of rows have the same rows.
    std::uint64_t revision() const { return revision_; }
    std::uint64_t rowsRevision() const { return rowsRevision_; }

    // Whether a row equals the whole text, without regard to case.
    bool contains(std::string_view text) const;
    bool contains(const Row& row) const { return containsFolded(row.folded()); }
    bool containsFolded(std::string_view folded) const; // for a text that is folded already
    // The same of each, for a list that isn't sorted.
    std::vector<bool> containsEachFolded(const std::vector<std::string_view>& folded) const;
    // The rows of a sorted list that equal the row without regard to case, in their order.
    std::vector<Row> equals(const Row& row) const;

private:
    // Small enough that moving a block's rows aside costs little, large enough that a full list
    // has few blocks.
    static constexpr std::size_t blockLimit = 256;
    struct Block {
        Block() { rows.reserve(blockLimit); }
        void insert(std::size_t offset, Row row); // not selected; there must be room
        void remove(std::size_t offset);
        Block takeFrom(std::size_t offset); // that row and all after it leave this block

        std::vector<Row> rows; // never empty
        using Marks = std::bitset<blockLimit>;
        Marks selected; // those of the rows that are
        static Marks marksBelow(std::size_t offset);
    };
    struct Place {
        std::size_t block;
        std::size_t offset;
    };

    void rowsChanged() { rowsRevision_ = revision_ = ++revisions; }
    void marksChanged() { revision_ = ++revisions; }
    bool isInside(int index) const { return index >= 0 && index < count_; }
    Place placeOf(int index) const;
    Place placeFor(const Row& row) const;
    Place firstNotBefore(std::string_view folded) const;
    int indexOf(Place place) const;
    void insert(Place place, Row row);
    void append(Row row);
    bool sortedContains(std::string_view folded) const;
    const TextSet& known() const;

    Order order_;
    std::vector<Block> blocks_;
    int count_ = 0;
    int current_ = -1;
    int selectedCount_ = 0;

    // Of all lists together, so that a copy of another list is told from what was here before.
    static inline std::uint64_t revisions = 0;
    std::uint64_t revision_ = 0, rowsRevision_ = 0; // 0: nothing in it

    // The block that was read last and the index of its first row: a walk by index needs no
    // search. Counts from the front again after a change.
    mutable std::size_t lastBlock_ = 0;
    mutable int lastBlockStart_ = 0;

    // The folded texts, for contains() on an unsorted list. Made when first asked for, kept up to
    // date by additions, and made anew after a removal.
    mutable std::optional<TextSet> known_;
};

} // namespace larkspin
