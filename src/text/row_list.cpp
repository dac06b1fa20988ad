#include "text/row_list.h"

#include "text/fold.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <utility>

namespace larkspin {

namespace {

const Row noRow;

// A row beside its folded text, so that sorting needn't take it out of the row at each comparison.
struct Placed {
    std::string_view folded;
    const Row* row;
};

} // namespace

RowList::Block::Marks RowList::Block::marksBelow(std::size_t offset) {
    return ~(~Marks() << offset);
}

void RowList::Block::insert(std::size_t offset, Row row) {
    const Marks below = marksBelow(offset);
    selected = (selected & below) | ((selected & ~below) << 1);
    rows.insert(rows.begin() + static_cast<std::ptrdiff_t>(offset), std::move(row));
}

void RowList::Block::remove(std::size_t offset) {
    const Marks below = marksBelow(offset);
    selected = (selected & below) | ((selected >> 1) & ~below);
    rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(offset));
}

RowList::Block RowList::Block::takeFrom(std::size_t offset) {
    Block taken;
    const auto first = rows.begin() + static_cast<std::ptrdiff_t>(offset);
    taken.rows.assign(std::make_move_iterator(first), std::make_move_iterator(rows.end()));
    taken.selected = selected >> offset;
    rows.erase(first, rows.end());
    selected &= marksBelow(offset);
    return taken;
}

bool RowList::add(Row row) {
    if (full())
        return false;
    if (known_)
        known_->insert(row.folded());
    // Rows mostly come in order: then a sorted list needs no search either.
    const bool goesLast = order_ == Order::ofAddition || empty() ||
                          row.folded() >= blocks_.back().rows.back().folded();
    const Place place = goesLast ? placeOf(count_) : placeFor(row);
    if (!goesLast && current_ >= 0 && indexOf(place) <= current_)
        ++current_;
    insert(place, std::move(row));
    rowsChanged();
    return true;
}

void RowList::assign(const std::vector<Row>& rows) {
    std::vector<Placed> order;
    order.reserve(rows.size());
    for (const Row& row : rows)
        if (order.size() < limit)
            order.push_back({row.folded(), &row});
    // All rows are sorted at once, which is much faster than to look for the place of each.
    if (order_ == Order::sorted)
        std::stable_sort(order.begin(), order.end(),
                         [](const Placed& a, const Placed& b) { return a.folded < b.folded; });
    clear();
    for (const Placed& placed : order)
        append(*placed.row);
    rowsChanged();
}

void RowList::append(Row row) {
    if (blocks_.empty() || blocks_.back().rows.size() == blockLimit)
        blocks_.emplace_back();
    blocks_.back().rows.push_back(std::move(row));
    ++count_;
}

void RowList::insert(Place place, Row row) {
    if (place.block == blocks_.size())
        blocks_.emplace_back();
    Block& block = blocks_[place.block];
    if (block.rows.size() < blockLimit) {
        block.insert(place.offset, std::move(row));
    } else if (place.offset == blockLimit) { // only after the last row of all
        // Rows that come in order fill their blocks to the brim.
        blocks_.emplace_back().rows.push_back(std::move(row));
    } else {
        // A full block in the middle is halved, and the row goes into the half that it belongs to.
        Block upper = block.takeFrom(blockLimit / 2);
        const bool below = place.offset <= blockLimit / 2;
        if (below)
            block.insert(place.offset, std::move(row));
        else
            upper.insert(place.offset - blockLimit / 2, std::move(row));
        blocks_.insert(blocks_.begin() + static_cast<std::ptrdiff_t>(place.block) + 1,
                       std::move(upper));
    }
    ++count_;
    if (lastBlock_ > place.block)
        lastBlock_ = 0, lastBlockStart_ = 0;
}

void RowList::removeAt(int index) {
    if (!isInside(index))
        return;
    setSelected(index, false);
    // The set has one view for all rows that fold to the same text. When the row that it looks into
    // goes, it can't be put right but by making it anew.
    known_.reset();
    const Place place = placeOf(index);
    Block& block = blocks_[place.block];
    block.remove(place.offset);
    if (block.rows.empty())
        blocks_.erase(blocks_.begin() + static_cast<std::ptrdiff_t>(place.block));
    --count_;
    rowsChanged();
    if (index == current_)
        current_ = -1;
    else if (index < current_)
        --current_;
    if (lastBlock_ == blocks_.size())
        lastBlock_ = 0, lastBlockStart_ = 0;
}

void RowList::replaceAt(int index, std::string_view text) {
    assert(order_ == Order::ofAddition);
    if (!isInside(index))
        return;
    known_.reset();
    const Place place = placeOf(index);
    blocks_[place.block].rows[place.offset] = Row(text);
    rowsChanged();
}

void RowList::clear() {
    *this = RowList(order_);
}

const Row& RowList::share(int index) const {
    if (!isInside(index))
        return noRow;
    const Place place = placeOf(index);
    return blocks_[place.block].rows[place.offset];
}

// Copies of a row share its text and no other row does, so the address of the text tells.
int RowList::find(const Row& row) const {
    for (int index = 0; index < count_; ++index)
        if (this->row(index).data() == row.text().data())
            return index;
    return -1;
}

bool RowList::isSelected(int index) const {
    if (!isInside(index))
        return false;
    const Place place = placeOf(index);
    return blocks_[place.block].selected[place.offset];
}

void RowList::setSelected(int index, bool selected) {
    if (isSelected(index) == selected || !isInside(index))
        return;
    const Place place = placeOf(index);
    blocks_[place.block].selected.set(place.offset, selected);
    selectedCount_ += selected ? 1 : -1;
    marksChanged();
}

// The row chosen before is usually the only one selected. Taking its mark away first spares
// clearSelection the walk over all rows.
bool RowList::choose(int index) {
    if (!isInside(index))
        return false;
    setSelected(current_, false);
    clearSelection();
    setSelected(index, true);
    return setCurrentIndex(index);
}

void RowList::clearSelection() {
    if (selectedCount_ == 0)
        return;
    for (Block& block : blocks_)
        block.selected.reset();
    selectedCount_ = 0;
    marksChanged();
}

bool RowList::setCurrentIndex(int index) {
    if (index < -1 || index >= count_)
        return false;
    if (index != current_)
        marksChanged();
    current_ = index;
    return true;
}

// The place of an index in the list, or after the last row for the count.
RowList::Place RowList::placeOf(int index) const {
    if (index == count_) {
        if (blocks_.empty())
            return {0, 0};
        return {blocks_.size() - 1, blocks_.back().rows.size()};
    }
    std::size_t block = 0;
    int start = 0;
    if (lastBlockStart_ <= index) {
        block = lastBlock_;
        start = lastBlockStart_;
    }
    while (index >= start + static_cast<int>(blocks_[block].rows.size()))
        start += static_cast<int>(blocks_[block++].rows.size());
    lastBlock_ = block;
    lastBlockStart_ = start;
    return {block, static_cast<std::size_t>(index - start)};
}

int RowList::indexOf(Place place) const {
    int index = static_cast<int>(place.offset);
    for (std::size_t block = 0; block < place.block; ++block)
        index += static_cast<int>(blocks_[block].rows.size());
    return index;
}

// The place after all rows that don't sort after this one. The list must not be empty.
RowList::Place RowList::placeFor(const Row& row) const {
    const auto after = [](std::string_view folded, const Row& other) {
        return folded < other.folded();
    };
    const auto block =
        std::partition_point(blocks_.begin(), blocks_.end(), [&](const Block& candidate) {
            return !after(row.folded(), candidate.rows.back());
        });
    if (block == blocks_.end())
        return placeOf(count_);
    const auto& rows = block->rows;
    const auto place = std::upper_bound(rows.begin(), rows.end(), row.folded(), after);
    return {static_cast<std::size_t>(block - blocks_.begin()),
            static_cast<std::size_t>(place - rows.begin())};
}

bool RowList::contains(std::string_view text) const {
    return containsFolded(foldCase(text));
}

bool RowList::containsFolded(std::string_view folded) const {
    return order_ == Order::sorted ? sortedContains(folded) : known().contains(folded);
}

std::vector<bool> RowList::containsEachFolded(const std::vector<std::string_view>& folded) const {
    assert(order_ == Order::ofAddition);
    return known().containsEach(folded);
}

// The place of the first row of a sorted list that doesn't sort before the text. When all do, that
// place has a block number past the last block.
RowList::Place RowList::firstNotBefore(std::string_view folded) const {
    const auto before = [](const Row& row, std::string_view text) { return row.folded() < text; };
    const auto block =
        std::partition_point(blocks_.begin(), blocks_.end(), [&](const Block& candidate) {
            return before(candidate.rows.back(), folded);
        });
    if (block == blocks_.end())
        return {blocks_.size(), 0};
    const auto& rows = block->rows;
    const auto found = std::lower_bound(rows.begin(), rows.end(), folded, before);
    return {static_cast<std::size_t>(block - blocks_.begin()),
            static_cast<std::size_t>(found - rows.begin())};
}

bool RowList::sortedContains(std::string_view folded) const {
    const Place place = firstNotBefore(folded);
    return place.block < blocks_.size() &&
           blocks_[place.block].rows[place.offset].folded() == folded;
}

std::vector<Row> RowList::equals(const Row& row) const {
    assert(order_ == Order::sorted);
    std::vector<Row> rows;
    for (Place at = firstNotBefore(row.folded()); at.block < blocks_.size(); at = {at.block + 1, 0})
        for (const auto& inBlock = blocks_[at.block].rows; at.offset < inBlock.size();
             ++at.offset) {
            const Row& other = inBlock[at.offset];
            if (other.folded() != row.folded())
                return rows;
            rows.push_back(other);
        }
    return rows;
}

const TextSet& RowList::known() const {
    if (!known_) {
        known_.emplace();
        for (const Block& block : blocks_)
            for (const Row& row : block.rows)
                known_->insert(row.folded());
    }
    return *known_;
}

} // namespace larkspin
