#include "platform/terminal/room/list_panes.h"

#include "platform/terminal/screen/columns.h"
#include "text/number.h"
#include "text/visible.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr int numberWidth = 2;
constexpr std::string_view callMark = "•";

std::string unreadOf(const ConversationRow& row) {
    return (row.unreadForOwner > 0 ? std::string(callMark) : "") + std::to_string(row.unread);
}

} // namespace

void ListScroll::toShow(int row, int rows) {
    first_ = std::clamp(first_, row - rows + 1, row);
}

int ListScroll::first(int rows, int count) {
    return first_ = std::clamp(first_, 0, std::max(count - rows, 0));
}

void RoomsPane::draw(Cells& cells, const Area& area, std::vector<ConversationRow> rows,
                     const RoomStyles& styles) {
    area_ = area;
    rows_ = std::move(rows);
    cells.fill(area, styles.plain);
    if (area.isEmpty())
        return;
    const auto front = std::ranges::find(rows_, true, &ConversationRow::isFront);
    if (front != rows_.end() && std::exchange(front_, front->place) != front->place)
        scroll_.toShow(static_cast<int>(front - rows_.begin()), area.rows);
    const int count = static_cast<int>(rows_.size()), first = scroll_.first(area.rows, count);
    for (int row = first; row < std::min(count, first + area.rows); ++row)
        drawRow(cells, {area.top + row - first, area.left, 1, area.columns},
                rows_[static_cast<std::size_t>(row)], styles);
}

// The number, by which Alt leads there, the name, and how much is unread.
void RoomsPane::drawRow(Cells& cells, const Area& at, const ConversationRow& row,
                        const RoomStyles& styles) const {
    if (!row.conversation) {
        cells.putCut(at.top, at.left, at.right(), row.caption, styles.dim);
        return;
    }
    const CellStyle &plain = row.isFront ? styles.chosen : styles.plain,
                    &dim = row.isFront ? styles.chosenDim : styles.dim,
                    &call = row.isFront ? styles.chosenCall : styles.call;
    cells.fill(at, plain);
    if (row.number) {
        const std::string number = std::to_string(*row.number);
        cells.put(at.top, at.left + std::max(numberWidth - columnsOf(number), 0), at.right(),
                  number, dim);
    }
    CellStyle name = row.isOpen ? plain : dim;
    name.bold = name.bold || row.unread > 0;
    int right = at.right();
    if (row.unread > 0) {
        const std::string unread = unreadOf(row);
        right = std::max(right - columnsOf(unread), at.left);
        cells.put(at.top, right, at.right(), unread, row.unreadForOwner > 0 ? call : name);
        --right;
    }
    cells.putCut(at.top, at.left + numberWidth + 1, right, row.caption, name);
}

std::string RoomsPane::placeAt(int row) const {
    const int index = scroll_.rowAt(area_, row);
    return index >= 0 && std::cmp_less(index, rows_.size())
               ? rows_[static_cast<std::size_t>(index)].place
               : "";
}

void PeoplePane::draw(Cells& cells, const Area& area, const std::vector<PeopleRow>& people,
                      const IsIgnored& isIgnored, const RoomStyles& styles) {
    area_ = area;
    names_.clear();
    cells.fill(area, styles.plain);
    if (area.isEmpty())
        return;
    const int count = static_cast<int>(people.size());
    cells.putCut(area.top, area.left, area.right(), counted(count, "person", "people"), styles.dim);
    list_ = {area.top + 1, area.left, area.rows - 1, area.columns};
    const int first = scroll_.first(list_.rows, count);
    for (int row = first; row < std::min(count, first + list_.rows); ++row) {
        const auto& [name, rank] = people[static_cast<std::size_t>(row)];
        const bool isOut = isIgnored(name);
        const int at = list_.top + row - first;
        cells.put(at, area.left, area.right(), rank, styles.dim);
        cells.putCut(at, area.left + 1, area.right(),
                     visibleName(name) + (isOut ? " (ignored)" : ""),
                     isOut ? styles.dim : styles.plain);
        names_.push_back(name);
    }
}

std::string PeoplePane::nameAt(int row) const {
    const int index = row - list_.top;
    return index >= 0 && std::cmp_less(index, names_.size())
               ? names_[static_cast<std::size_t>(index)]
               : "";
}

std::string unreadWords(const std::vector<ConversationRow>& rows) {
    std::string words;
    for (const ConversationRow& row : rows)
        if (row.conversation && row.unread > 0)
            words += (words.empty() ? "" : " ") +
                     (row.number ? std::to_string(*row.number) : row.caption) + ':' + unreadOf(row);
    return words;
}

} // namespace larkspin
