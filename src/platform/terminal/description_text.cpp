#include "platform/terminal/description_text.h"

#include "shell/control_events.h"
#include "text/fold.h"
#include "text/number.h"
#include "text/row_list.h"

#include <algorithm>

namespace larkspin {

namespace {

using Kind = Control::Kind;
using Lines = std::vector<std::string>;

constexpr std::size_t numberWidth = 5; // digits of the largest row number

std::string kindName(Kind kind) {
    switch (kind) {
    case Kind::label:
        return "label";
    case Kind::button:
        return "button";
    case Kind::list:
        return "list";
    case Kind::textField:
        return "text field";
    case Kind::slider:
        return "slider";
    case Kind::combo:
        return "combo";
    case Kind::swatch:
        return "swatch";
    }
    return {};
}

std::string quoted(const std::string& text) {
    return " \"" + text + '"';
}

std::string sliderText(const Control& slider) {
    return ' ' + std::to_string(slider.value ? slider.value() : slider.least) + " (" +
           std::to_string(slider.least) + " to " + std::to_string(slider.most) + ')';
}

std::string swatchText(const Control& swatch) {
    std::string text = " #";
    for (const unsigned shift : {0u, 8u, 16u}) // red stands lowest
        text += hexPair(static_cast<std::uint8_t>(swatch.background >> shift));
    return text;
}

int pageCount(const RowList& rows) {
    return std::max(1, (rows.count() + rowsPerPage - 1) / rowsPerPage);
}

// How many rows there are, and which page of them follows.
std::string rowsText(const RowList& rows, int page) {
    std::string text = ", " + counted(rows.count(), "row");
    if (pageCount(rows) > 1)
        text += ", page " + std::to_string(page) + " of " + std::to_string(pageCount(rows));
    return text;
}

// The full name comes first, since a control is worked by that.
std::string controlLine(const Window& window, const Control& control, int page) {
    std::string line = window.name + '.' + control.name + ": " + kindName(control.kind);
    if (control.text)
        line += quoted(control.text());
    if (!control.spoken.empty())
        line += " (" + control.spoken + ')';
    if (control.kind == Kind::slider)
        line += sliderText(control);
    if (control.kind == Kind::swatch)
        line += swatchText(control);
    if (control.rows)
        line += rowsText(*control.rows, page);
    if (const int marked = control.markedRow ? control.markedRow() : noRow; marked != noRow)
        line += ", row " + std::to_string(marked + 1) + ' ' + control.markedAs;
    return line;
}

void appendRows(Lines& lines, const RowList& rows, int page) {
    const int first = (page - 1) * rowsPerPage;
    for (int row = first; row < std::min(first + rowsPerPage, rows.count()); ++row) {
        std::string line = row == rows.currentIndex() ? ">" : " ";
        line += rows.isSelected(row) ? "*" : " ";
        const std::string number = std::to_string(row + 1);
        line.append(numberWidth - number.size(), ' ').append(number).append(" ");
        lines.push_back(line.append(rows.row(row)));
    }
}

void appendEntries(Lines& lines, const std::vector<MenuEntry>& entries, std::size_t depth) {
    for (const MenuEntry& entry : entries) {
        std::string line(2 * depth, ' ');
        line += entry.name + ": " + entry.caption;
        lines.push_back(entry.checked ? line + " (checked)" : line);
        appendEntries(lines, entry.children, depth + 1);
    }
}

} // namespace

Lines windowLines(const Window& window, int page) {
    Lines lines;
    if (page == 1)
        lines.push_back(window.visible ? window.name : window.name + " (hidden)");
    for (const Control& control : window.controls) {
        // Pages after the first go on with the lists and repeat nothing else.
        if (!isOnWindow(window, control) || (page > 1 && !control.rows))
            continue;
        lines.push_back(controlLine(window, control, page));
        if (control.rows)
            appendRows(lines, *control.rows, page);
    }
    return lines;
}

Lines menuLines(const Menu& menu) {
    Lines lines{menu.name};
    appendEntries(lines, menu.entries(), 1);
    return lines;
}

Lines submenuLines(const MenuEntry& entry) {
    Lines lines{entry.name + ": " + entry.caption};
    appendEntries(lines, entry.children, 1);
    return lines;
}

const MenuEntry* findEntry(const std::vector<MenuEntry>& entries, std::string_view name) {
    for (const MenuEntry& entry : entries) {
        if (equalFolded(entry.name, name))
            return &entry;
        if (const MenuEntry* found = findEntry(entry.children, name))
            return found;
    }
    return nullptr;
}

} // namespace larkspin
