#include "platform/terminal/windows/menu_level.h"

#include "platform/terminal/screen/columns.h"
#include "text/fold.h"
#include "text/utf8.h"

#include <algorithm>
#include <string>

namespace larkspin {

namespace {

constexpr int checkColumns = 2, submenuColumns = 2; // in front of captions, and after them

} // namespace

// What a menu belongs to isn't covered, if there is room on one of its sides.
void MenuLevel::place(const Area& screen) {
    int widest = 0;
    for (const MenuEntry& each : entries_)
        widest = std::max(widest, columnsOf(seenText(each.caption)));
    area_.columns = widest + checkColumns + submenuColumns + 2 * frame;
    area_.rows = std::min(count() + 2 * frame, screen.rows);
    if (stands_ == Stands::below) {
        standBelow(screen);
    } else {
        area_.top = owner_.top - frame;
        const bool hasRoom = owner_.right() + area_.columns <= screen.columns;
        const bool isLeft = !hasRoom && owner_.left >= area_.columns;
        area_.left = isLeft ? owner_.left - area_.columns : owner_.right();
    }
    area_.columns = std::min(area_.columns, screen.columns);
    area_.top = std::clamp(area_.top, 0, screen.rows - area_.rows);
    area_.left = std::clamp(area_.left, 0, screen.columns - area_.columns);
}

void MenuLevel::standBelow(const Area& screen) {
    area_.columns = std::max(area_.columns, owner_.columns);
    area_.top = owner_.bottom();
    area_.left = owner_.left;
    const int below = screen.rows - owner_.bottom();
    if (area_.rows > below && owner_.top > below) {
        area_.rows = std::min(area_.rows, owner_.top);
        area_.top = owner_.top - area_.rows;
    } else {
        area_.rows = std::min(area_.rows, std::max(below, std::min(screen.rows, 2 * frame + 1)));
    }
}

void MenuLevel::scroll() {
    const int shown = std::max(inside().rows, 1);
    if (marked_ >= 0)
        first_ = std::clamp(first_, marked_ - shown + 1, marked_);
    first_ = std::clamp(first_, 0, std::max(count() - shown, 0));
}

void MenuLevel::draw(Cells& cells, const TwoColors& colors, bool isLast) {
    place(cells.area());
    scroll();
    const CellStyle plain = plainIn(colors), dim = dimIn(colors);
    cells.fill(area_, plain);
    drawFrame(cells, area_, isLast ? plain : dim);
    for (int index = first_; index < std::min(first_ + inside().rows, count()); ++index)
        drawEntry(cells, index, colors);
    drawScrollMark(cells, {inside().top, inside().right(), inside().rows, 1},
                   {first_, inside().rows, count()}, dim);
}

void MenuLevel::drawEntry(Cells& cells, int index, const TwoColors& colors) const {
    const Area line{inside().top + index - first_, inside().left, 1, inside().columns};
    const MenuEntry& shown = entry(index);
    if (shown.isSeparator()) {
        for (int column = line.left; column < line.right(); ++column)
            cells.put(line.top, column, line.right(), "─", dimIn(colors));
        return;
    }
    CellStyle style = plainIn(colors);
    style.reversed = index == marked_;
    cells.fill(line, style);
    if (shown.checked)
        cells.put(line.top, line.left, line.right(), "√", style);
    cells.putCut(line.top, line.left + checkColumns,
                 line.right() - (shown.isSubmenu ? submenuColumns : 0), shown.caption, style);
    if (shown.isSubmenu)
        cells.put(line.top, line.right() - 1, line.right(), "►", style);
}

Area MenuLevel::lineOfMarked() const {
    return {inside().top + std::max(marked_ - first_, 0), area_.left, 1, area_.columns};
}

int MenuLevel::entryAt(int row) const {
    const int index = first_ + row - inside().top;
    const bool isIn = row >= inside().top && row < inside().bottom() && index < count();
    return isIn && !entry(index).isSeparator() ? index : -1;
}

const MenuEntry* MenuLevel::markedEntry() const {
    return marked_ < 0 ? nullptr : &entry(marked_);
}

void MenuLevel::markChecked() {
    const auto checked = std::ranges::find(entries_, true, &MenuEntry::checked);
    if (checked != entries_.end())
        marked_ = static_cast<int>(checked - entries_.begin());
}

void MenuLevel::markFirst(int from, int way) {
    for (int tried = 0; tried < count(); ++tried) {
        const int index = ((from + way * tried) % count() + count()) % count();
        if (entry(index).isSeparator())
            continue;
        marked_ = index;
        return;
    }
}

// A step goes round the ends; a page stops there.
void MenuLevel::move(int way) {
    const int step = way > 0 ? 1 : -1;
    if (marked_ < 0)
        markFirst(way > 0 ? 0 : count() - 1, step);
    else if (way == step)
        markFirst(marked_ + step, step);
    else
        markFirst(std::clamp(marked_ + way, 0, count() - 1), -step);
}

bool MenuLevel::markByLetter(char32_t letter) {
    std::string typed;
    appendCharacter(typed, letter);
    for (int tried = 1; tried <= count(); ++tried) {
        const int index = (marked_ + tried) % count();
        if (entry(index).isSeparator() ||
            !foldCase(entry(index).caption).starts_with(foldCase(typed)))
            continue;
        marked_ = index;
        return true;
    }
    return false;
}

} // namespace larkspin
