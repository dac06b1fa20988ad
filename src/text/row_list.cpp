#include "text/row_list.h"

#include "text/fold.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <utility>

namespace larkspin {

namespace {

// Small enough that moving a block's rows aside costs little, large enough that a full list
// has few blocks.
constexpr std::size_t blockLimit = 256;

const Row noRow;

// A row beside its folded text, so that sorting needn't take it out of the row at each comparison.
struct Placed {
    std::string_view folded;
    const Row* row;
};

} // namespace

bool RowList::add(Row row) {
    if (full())
        return false;
    if (known_)
        known_->insert(row.folded());
    // Rows mostly come in order: then a sorted list needs no search either.
    const bool goesLast = order_ == Order::ofAddition || empty() ||
                          row.folded() >= blocks_.back().back().row.folded();
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
    if (blocks_.empty() || blocks_.back().size() == blockLimit)
        blocks_.emplace_back().reserve(blockLimit);
    blocks_.back().push_back({std::move(row)});
    ++count_;
}

void RowList::insert(Place place, Row row) {
    if (place.block == blocks_.size())
        blocks_.emplace_back().reserve(blockLimit);
    Block& block = blocks_[place.block];
    if (block.size() < blockLimit) {
        block.insert(block.begin() + static_cast<std::ptrdiff_t>(place.offset), {std::move(row)});
    } else if (place.offset == block.size()) { // only after the last row of all
        // Rows that come in order fill their blocks to the brim.
        Block next;
        next.reserve(blockLimit);
        next.push_back({std::move(row)});
        blocks_.push_back(std::move(next));
    } else {
        // A full block in the middle is halved, and the row goes into the half that it belongs to.
        Block upper;
        upper.reserve(blockLimit);
        const auto middle = block.begin() + blockLimit / 2;
        upper.assign(std::make_move_iterator(middle), std::make_move_iterator(block.end()));
        block.erase(middle, block.end());
        const bool below = place.offset <= block.size();
        Block& target = below ? block : upper;
        const auto offset = below ? place.offset : place.offset - block.size();
        target.insert(target.begin() + static_cast<std::ptrdiff_t>(offset), {std::move(row)});
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
    block.erase(block.begin() + static_cast<std::ptrdiff_t>(place.offset));
    if (block.empty())
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
    blocks_[place.block][place.offset].row = Row(text);
    rowsChanged();
}

void RowList::clear() {
    *this = RowList(order_);
}

const Row& RowList::share(int index) const {
    return isInside(index) ? slot(index).row : noRow;
}

// Copies of a row share its text and no other row does, so the address of the text tells.
int RowList::find(const Row& row) const {
    for (int index = 0; index < count_; ++index)
        if (this->row(index).data() == row.text().data())
            return index;
    return -1;
}

bool RowList::isSelected(int index) const {
    return isInside(index) && slot(index).selected;
}

void RowList::setSelected(int index, bool selected) {
    if (isSelected(index) == selected || !isInside(index))
        return;
    const Place place = placeOf(index);
    blocks_[place.block][place.offset].selected = selected;
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
        for (Slot& slot : block)
            slot.selected = false;
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

const RowList::Slot& RowList::slot(int index) const {
    const Place place = placeOf(index);
    return blocks_[place.block][place.offset];
}

// The place of an index in the list, or after the last row for the count.
RowList::Place RowList::placeOf(int index) const {
    if (index == count_) {
        if (blocks_.empty())
            return {0, 0};
        return {blocks_.size() - 1, blocks_.back().size()};
    }
    std::size_t block = 0;
    int start = 0;
    if (lastBlockStart_ <= index) {
        block = lastBlock_;
        start = lastBlockStart_;
    }
    while (index >= start + static_cast<int>(blocks_[block].size()))
        start += static_cast<int>(blocks_[block++].size());
    lastBlock_ = block;
    lastBlockStart_ = start;
    return {block, static_cast<std::size_t>(index - start)};
}

int RowList::indexOf(Place place) const {
    int index = static_cast<int>(place.offset);
    for (std::size_t block = 0; block < place.block; ++block)
        index += static_cast<int>(blocks_[block].size());
    return index;
}

// The place after all rows that don't sort after this one. The list must not be empty.
RowList::Place RowList::placeFor(const Row& row) const {
    const auto after = [](std::string_view folded, const Slot& slot) {
        return folded < slot.row.folded();
    };
    const auto block =
        std::partition_point(blocks_.begin(), blocks_.end(), [&](const Block& candidate) {
            return !after(row.folded(), candidate.back());
        });
    if (block == blocks_.end())
        return placeOf(count_);
    const auto place = std::upper_bound(block->begin(), block->end(), row.folded(), after);
    return {static_cast<std::size_t>(block - blocks_.begin()),
            static_cast<std::size_t>(place - block->begin())};
}

bool RowList::contains(std::string_view text) const {
    return containsFolded(foldCase(text));
}

bool RowList::containsFolded(std::string_view folded) const {
    return order_ == Order::sorted ? sortedContains(folded) : known().contains(folded);
}

// The place of the first row of a sorted list that doesn't sort before the text. When all do, that
// place has a block number past the last block.
RowList::Place RowList::firstNotBefore(std::string_view folded) const {
    const auto before = [](const Slot& slot, std::string_view text) {
        return slot.row.folded() < text;
    };
    const auto block =
        std::partition_point(blocks_.begin(), blocks_.end(), [&](const Block& candidate) {
            return before(candidate.back(), folded);
        });
    if (block == blocks_.end())
        return {blocks_.size(), 0};
    const auto found = std::lower_bound(block->begin(), block->end(), folded, before);
    return {static_cast<std::size_t>(block - blocks_.begin()),
            static_cast<std::size_t>(found - block->begin())};
}

bool RowList::sortedContains(std::string_view folded) const {
    const Place place = firstNotBefore(folded);
    return place.block < blocks_.size() &&
           blocks_[place.block][place.offset].row.folded() == folded;
}

std::vector<Row> RowList::equals(const Row& row) const {
    assert(order_ == Order::sorted);
    std::vector<Row> rows;
    for (Place at = firstNotBefore(row.folded()); at.block < blocks_.size(); at = {at.block + 1, 0})
        for (const Block& block = blocks_[at.block]; at.offset < block.size(); ++at.offset) {
            const Row& other = block[at.offset].row;
            if (other.folded() != row.folded())
                return rows;
            rows.push_back(other);
        }
    return rows;
}

const RowList::FoldedTexts& RowList::known() const {
    if (!known_) {
        known_.emplace();
        for (const Block& block : blocks_)
            for (const Slot& slot : block)
                known_->insert(slot.row.folded());
    }
    return *known_;
}

} // namespace larkspin
