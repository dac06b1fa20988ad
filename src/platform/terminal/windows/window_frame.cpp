#include "platform/terminal/windows/window_frame.h"

#include "platform/terminal/windows/window_layer.h"
#include "shell/control_events.h"

#include <algorithm>

namespace larkspin {

namespace {

// Twips: of a cell, by which a window's place is described.
constexpr int cellWidth = 120, cellHeight = 240;
constexpr int sides = 2; // columns

int cellsOf(int twips, int cell) {
    return (twips < 0 ? twips - cell / 2 : twips + cell / 2) / cell;
}

} // namespace

void WindowFrame::appear() {
    isPlaced_ = isMoved_ = false;
    area_ = {};
    layout_ = {.areas = std::vector<Area>(window_.controls.size())};
    states_.resize(window_.controls.size()); // keys may come before it has been drawn
    needed_.clear();
    scrolled_ = 0;
}

void WindowFrame::layOutOn(const Area& whole, const std::string& focus) {
    whole_ = whole;
    needed_.resize(window_.controls.size());
    states_.resize(window_.controls.size());
    for (std::size_t index = 0; index < needed_.size(); ++index)
        if (const Control& control = window_.controls[index]; isOnWindow(window_, control))
            needed_[index] = std::max(needed_[index], neededColumns(control));
    layout_ = layOut(window_, needed_, {whole.rows - 1, whole.columns - sides});
    const int upper = layout_.hasStrip ? 0 : 1;
    const int lower = layout_.rows + upper > 1 ? 1 : 0; // a strip alone needs no lower side
    place({0, 0, std::min(upper + layout_.rows + lower, whole.rows),
           std::min(layout_.columns + sides, whole.columns)});
    inside_ = {area_.top + 1, area_.left + 1, std::max(area_.rows - 1 - lower, 0),
               std::max(area_.columns - sides, 0)};
    bringIntoSight(focus);
}

// A window stays where it is until its description wants it elsewhere. Where the screen has become
// too small for that, it comes back there with its old size.
void WindowFrame::place(const Area& size) {
    const std::pair wanted(window_.place.left, window_.place.top);
    const bool isAsked = std::exchange(asked_, wanted) != wanted || !isPlaced_;
    Area area{home_.row, home_.column, size.rows, size.columns};
    const auto onOther = isAsked ? placeOnOther(size) : std::nullopt;
    if ((window_.centred || isBox_) && !isMoved_)
        area = {whole_.top + (whole_.rows - size.rows) / 2,
                whole_.left + (whole_.columns - size.columns) / 2, size.rows, size.columns};
    else if (onOther)
        area = *onOther;
    else if (!isPlaced_ && window_.beside)
        area = stage_.freePlace(window_, size, whole_);
    else if (isAsked)
        area = {cellsOf(window_.place.top, cellHeight), cellsOf(window_.place.left, cellWidth),
                size.rows, size.columns};
    isPlaced_ = true;
    home_ = {area.top, area.left};
    area_ = area;
    stand(home_);
}

void WindowFrame::stand(const Cursor& at) {
    area_.top = std::clamp(at.row, whole_.top, std::max(whole_.bottom() - area_.rows, whole_.top));
    area_.left =
        std::clamp(at.column, whole_.left, std::max(whole_.right() - area_.columns, whole_.left));
}

// One that stands on another, by its description, stands beside that where there is room.
std::optional<Area> WindowFrame::placeOnOther(const Area& size) const {
    const WindowLayer* const other = window_.standsOn ? stage_.find(*window_.standsOn) : nullptr;
    if (!other || other->area().isEmpty())
        return std::nullopt;
    const Area& base = other->area();
    const Area places[] = {{base.top - size.rows, base.left, size.rows, size.columns},
                           {base.bottom(), base.left, size.rows, size.columns},
                           {base.top, base.left - size.columns, size.rows, size.columns},
                           {base.top, base.right(), size.rows, size.columns}};
    const auto* const found = std::ranges::find_if(
        places, [this](const Area& each) { return each.within(whole_) == each; });
    return found == std::end(places) ? places[0] : *found;
}

Area WindowFrame::spotOf(std::size_t index) const {
    Area area = layout_.areas[index];
    const bool onStrip = layout_.hasStrip && area.top == 0;
    area.left += inside_.left;
    area.columns = std::max(std::min(area.columns, inside_.right() - area.left), 0);
    area.top += onStrip ? area_.top : inside_.top - stripRows() - scrolled_;
    return area;
}

Area WindowFrame::clipFor(const Control& control) const {
    return layout_.hasStrip && isOnStrip(control) ? Area{area_.top, area_.left, 1, area_.columns}
                                                  : inside_;
}

std::string WindowFrame::controlAt(int row, int column) const {
    for (std::size_t index = layout_.areas.size(); index-- > 0;) {
        const Control& control = window_.controls[index];
        if (isShown(window_, control) && spotOf(index).within(clipFor(control)).holds(row, column))
            return control.name;
    }
    return {};
}

void WindowFrame::bringIntoSight(const std::string& control) {
    for (std::size_t index = 0; index < window_.controls.size(); ++index) {
        if (window_.controls[index].name != control || isOnStrip(window_.controls[index]))
            continue;
        const int top = layout_.areas[index].top - stripRows();
        const int bottom = top + layout_.areas[index].rows;
        scrolled_ = std::min(std::max(scrolled_, bottom - inside_.rows), top);
    }
    scrolled_ = std::clamp(scrolled_, 0, std::max(hiddenRows(), 0));
}

// With marks where there is more above or below, and how the keyboard comes to a box.
void WindowFrame::draw(Cells& cells, bool hasKeyboard) const {
    const TwoColors colors = legible(
        {window_.controls.empty() ? aqua : window_.controls[0].foreground, window_.background});
    const CellStyle plain = plainIn(colors), dim = dimIn(colors);
    cells.fill(area_, plain);
    CellStyle line = hasKeyboard ? plain : dim;
    line.bold = hasKeyboard; // where there are no colours
    drawFrame(cells, area_, line);
    const int right = area_.right();
    if (scrolled_ > 0)
        cells.put(inside_.top, right - 1, right, "▲", dim);
    if (scrolled_ < hiddenRows())
        cells.put(inside_.bottom() - 1, right - 1, right, "▼", dim);
    if (isBox_ && !hasKeyboard && inside_.bottom() < area_.bottom())
        cells.putCut(area_.bottom() - 1, area_.left + sides, right - 1,
                     stage_.isLineBegun() || stage_.keyboard() ? " f6 to answer "
                                                               : " return to answer ",
                     dim);
}

void WindowFrame::shift(int rows, int columns) {
    stand({area_.top + rows, area_.left + columns});
    home_ = {area_.top, area_.left};
    window_.place.top += rows * cellHeight;
    window_.place.left += columns * cellWidth;
    asked_ = {window_.place.left, window_.place.top};
}

// From now on it stands where the owner wants it. The description is told.
void WindowFrame::moveTo(int top, int left) {
    const Area before = area_;
    stand({top, left});
    home_ = {area_.top, area_.left};
    const int rows = area_.top - before.top, columns = area_.left - before.left;
    if (rows == 0 && columns == 0)
        return;
    window_.centred = window_.beside = false;
    isMoved_ = true;
    window_.place.top = area_.top * cellHeight;
    window_.place.left = area_.left * cellWidth;
    asked_ = {window_.place.left, window_.place.top};
    stage_.moveAlong(window_, rows, columns);
}

} // namespace larkspin
