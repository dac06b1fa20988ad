#include "platform/terminal/windows/cell_layout.h"

#include "shell/control_events.h"
#include "shell/controls.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <set>

namespace larkspin {

namespace {

// Twips. How wide a column may count for, from the most generous on, and how high a row of a list.
constexpr double columnWidths[] = {75, 90, 100, 120, 150};
constexpr int listRows[] = {130, 165, 200, 240, 285, 350, 450, 600, 900, 1800};
constexpr int plainRow = 285;     // one with a button
constexpr int lineOfText = 200;   // in a field with several
constexpr int severalLines = 400; // a field of this height has more than one

// Of the screen, which a window takes no more of as long as it can be read.
constexpr double usualShare = 2.0 / 3;

constexpr double noWidth = 0;

struct Piece { // of a control along one axis
    int begin = 0, end = 0;
    int least = 1; // cells
};

// By edge in twips, the cell at which it lies. Edges keep their order and what lies between two of
// them its room, so nothing can come to lie upon what it didn't lie upon before.
using Edges = std::map<int, int>;

// `share` tells how many cells an edge is from the start if nothing pushes it further; `gap` how
// many lie between two edges when nothing stands there.
template <typename Share, typename Gap>
Edges edgesOf(const std::vector<Piece>& pieces, const Share& share, const Gap& gap) {
    std::set<int> sorted;
    for (const Piece& piece : pieces)
        sorted.insert({piece.begin, piece.end});
    Edges edges;
    int last = 0, at = 0;
    for (const int edge : sorted) {
        const bool isEmpty = std::none_of(pieces.begin(), pieces.end(), [&](const Piece& piece) {
            return piece.begin < edge && piece.end > last;
        });
        at = std::max(share(edge), at + (isEmpty ? gap(edge - last) : 0));
        for (const Piece& piece : pieces)
            if (piece.end == edge)
                at = std::max(at, edges[piece.begin] + piece.least);
        edges[edge] = at;
        last = edge;
    }
    return edges;
}

Edges columnEdges(std::vector<Piece> pieces, double columnWidth, int mostNeeded) {
    for (Piece& piece : pieces)
        piece.least = std::clamp(piece.least, 1, mostNeeded);
    const auto share = [columnWidth](int edge) {
        return columnWidth == noWidth ? 0 : static_cast<int>(std::lround(edge / columnWidth));
    };
    return edgesOf(pieces, share, [](int) { return 0; });
}

Edges rowEdges(const std::vector<Piece>& pieces) {
    return edgesOf(
        pieces, [](int) { return 0; }, [](int twips) { return twips / plainRow; });
}

int sizeOf(const Edges& edges) {
    return edges.empty() ? 0 : edges.rbegin()->second;
}

int rowsOf(const Control& control, int listRow) {
    const int height = control.place.height;
    if (control.kind == Control::Kind::list)
        return std::max(2, height / listRow);
    if (hasSeveralLines(control))
        return std::max(1, height / std::max(listRow, lineOfText));
    return control.kind == Control::Kind::swatch ? std::max(1, height / plainRow) : 1;
}

struct Shown {
    std::size_t index;
    const Control& control;
};

std::vector<Shown> shownOf(const Window& window) {
    std::vector<Shown> shown;
    for (std::size_t index = 0; index < window.controls.size(); ++index)
        if (isOnWindow(window, window.controls[index]))
            shown.push_back({index, window.controls[index]});
    return shown;
}

Edges fittingColumns(const std::vector<Piece>& pieces, int most) {
    for (const double share : {usualShare, 1.0})
        for (const double width : columnWidths)
            if (const Edges edges = columnEdges(pieces, width, most); sizeOf(edges) <= most * share)
                return edges;
    int mostNeeded = most;
    Edges edges = columnEdges(pieces, noWidth, mostNeeded);
    while (sizeOf(edges) > most && mostNeeded > 1)
        edges = columnEdges(pieces, noWidth, --mostNeeded);
    return edges;
}

Edges fittingRows(const std::vector<Shown>& shown, int most) {
    Edges edges;
    for (const double share : {usualShare, 1.0})
        for (const int listRow : listRows) {
            std::vector<Piece> pieces;
            for (const auto& [index, control] : shown)
                pieces.push_back({control.place.top, control.place.top + control.place.height,
                                  rowsOf(control, listRow)});
            edges = rowEdges(pieces);
            if (sizeOf(edges) <= most * share)
                return edges;
        }
    return edges;
}

} // namespace

bool isOnStrip(const Control& control) {
    return control.place.top == 0 && control.place.height == stripHeight;
}

bool hasSeveralLines(const Control& control) {
    return control.kind == Control::Kind::textField && control.place.height >= severalLines;
}

CellLayout layOut(const Window& window, const std::vector<int>& needed, const CellBounds& most) {
    const auto shown = shownOf(window);
    std::vector<Piece> across;
    for (const auto& [index, control] : shown)
        across.push_back({control.place.left, control.place.left + control.place.width,
                          index < needed.size() ? needed[index] : 1});
    Edges columns = fittingColumns(across, std::max(most.columns, 1));
    Edges rows = fittingRows(shown, std::max(most.rows, 1));
    CellLayout layout{.areas = std::vector<Area>(window.controls.size()),
                      .rows = sizeOf(rows),
                      .columns = sizeOf(columns)};
    for (const auto& [index, control] : shown) {
        const Place& place = control.place;
        Area& area = layout.areas[index];
        area = {rows[place.top], columns[place.left], 0, 0};
        area.rows = rows[place.top + place.height] - area.top;
        area.columns = columns[place.left + place.width] - area.left;
        layout.hasStrip = layout.hasStrip || isOnStrip(control);
    }
    return layout;
}

} // namespace larkspin
