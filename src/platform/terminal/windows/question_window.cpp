#include "platform/terminal/windows/question_window.h"

#include "platform/terminal/screen/columns.h"
#include "platform/terminal/windows/control_drawing.h"
#include "shell/controls.h"
#include "text/stand_ins.h"

#include <algorithm>

namespace larkspin {

namespace {

constexpr int leastColumns = 30, margins = 2;
constexpr int gapOfRows = 30; // twips
constexpr int blankRow = twipsPerRow + gapOfRows;

int widest(const std::vector<std::string>& lines) {
    int columns = 0;
    for (const std::string& line : lines)
        columns = std::max(columns, columnsOf(line));
    return columns;
}

} // namespace

std::vector<Control> dialogStrip(Window& window, int width, const std::string& title,
                                 Task dismiss) {
    return {label({.name = "title",
                   .place = {0, 0, width - closeWidth, stripHeight},
                   .text = caption(title),
                   .onMouseDown = [&window] { window.dragged = true; }}),
            button({.name = "close",
                    .place = {width - closeWidth, 0, closeWidth, stripHeight},
                    .spoken = std::string(closeSpoken),
                    .text = caption("X"),
                    .onClick = std::move(dismiss)})};
}

std::vector<Control> dialogButtons(int width, int top, const std::vector<DialogButton>& buttons) {
    constexpr int buttonWidth = 10 * twipsPerColumn, gap = 2 * twipsPerColumn;
    const int count = static_cast<int>(buttons.size());
    int left = (width - count * buttonWidth - (count - 1) * gap) / 2;
    std::vector<Control> controls;
    for (const DialogButton& each : buttons) {
        controls.push_back(button({.name = each.caption,
                                   .place = {left, top, buttonWidth, twipsPerRow},
                                   .text = caption(each.caption),
                                   .onClick = each.press}));
        left += buttonWidth + gap;
    }
    return controls;
}

void paint(Window& window, const TwoColors& colors) {
    window.background = colors.background;
    for (Control& control : window.controls) {
        control.foreground = colors.foreground;
        control.background = colors.background;
    }
}

QuestionWindow::QuestionWindow(Kind kind, const std::string& title, const std::string& text,
                               const std::string& preset)
    : line_(asSeen(preset)) {
    const auto lines = linesOf(text, dialogColumns);
    const int columns = std::max({widest(lines), leastColumns, columnsOf(seenText(title)) + 8});
    const int width = (std::min(columns, dialogColumns) + margins) * twipsPerColumn;
    const int rows = static_cast<int>(lines.size());
    std::vector<Control>& controls = window.controls;
    controls = dialogStrip(window, width, kind == Kind::stop ? title + " - stop" : title,
                           [this] { end(false); });
    int top = stripHeight + gapOfRows;
    controls.push_back(
        textField({.name = "text",
                   .place = {0, top, width, rows > 1 ? rows * twipsPerLine : twipsPerRow},
                   .text = caption(text)}));
    top += controls.back().place.height + gapOfRows;
    if (kind == Kind::line) {
        controls.push_back(
            textField({.name = "line",
                       .place = {0, top, width, twipsPerRow},
                       .text = [this] { return line_; },
                       .onKey =
                           [this](Key key) {
                               if (key == Key::enter)
                                   end(true);
                           },
                       .onEdit = [this](const std::string& typed) { line_ = typed; }}));
        top += twipsPerRow;
    }
    std::vector<DialogButton> buttons{{"ok", [this] { end(true); }}};
    if (kind == Kind::yesOrNo)
        buttons[0].caption = yes;
    if (kind == Kind::yesOrNo || kind == Kind::line)
        buttons.push_back({kind == Kind::line ? "cancel" : no, [this] { end(false); }});
    for (Control& each : dialogButtons(width, top + blankRow, buttons))
        controls.push_back(std::move(each));
    focus = kind == Kind::line ? "line" : buttons[0].caption;
    window.name = "question";
    window.place = {0, 0, width, top + blankRow + twipsPerRow};
    window.centred = window.visible = true;
}

void QuestionWindow::end(bool accepts) {
    isOver_ = true;
    isAccepted_ = accepts;
}

} // namespace larkspin
