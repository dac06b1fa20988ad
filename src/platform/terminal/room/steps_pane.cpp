#include "platform/terminal/room/steps_pane.h"

#include "platform/terminal/screen/columns.h"
#include "text/visible.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr std::string_view addCaption = " add my music folder ", hideCaption = " hide ";
constexpr int above = 1;                           // a blank row
constexpr int indentOfSteps = 2, betweenSteps = 2; // columns

} // namespace

bool StepsPane::refresh() {
    Shown now{.isShown = steps_.areShown()};
    if (now.isShown) {
        now.isAskedFor = steps_.areAskedFor();
        now.title = steps_.title();
        now.progress = steps_.progress();
        auto all = steps_.steps();
        all.insert(all.begin(), steps_.allTypes());
        for (const auto& [line, does] : all)
            if (!line.empty()) {
                now.lines.push_back(line);
                now.does.push_back(does);
            }
    }
    return std::exchange(shown_, now) != now;
}

int StepsPane::rows() const {
    return shown_.isShown ? static_cast<int>(shown_.lines.size()) + above + 2 : 0;
}

void StepsPane::draw(Cells& cells, const Area& area, const RoomStyles& styles) {
    area_ = {area.top + above, area.left, area.rows - above, area.columns};
    add_ = hide_ = {};
    if (area.isEmpty())
        return;
    cells.fill(area, styles.plain);
    cells.putCut(area_.top, area.left, area.right(), shown_.title, styles.dim);
    int widest = 0;
    for (const std::string& line : shown_.lines)
        widest = std::max(widest, columnsOf(visibleText(line, " ")));
    const int left = area.left + indentOfSteps;
    const int does = std::min(left + widest + betweenSteps, area.right());
    for (std::size_t step = 0; step < shown_.lines.size(); ++step) {
        const int row = area_.top + 1 + static_cast<int>(step);
        cells.putCut(row, left, does - 1, shown_.lines[step], styles.name);
        cells.putCut(row, does, area.right(), shown_.does[step], styles.dim);
    }
    drawFoot(cells, styles);
}

void StepsPane::drawFoot(Cells& cells, const RoomStyles& styles) {
    const int row = area_.bottom() - 1;
    int column = area_.left + indentOfSteps;
    const auto button = [&](std::string_view caption) {
        const int end = cells.put(row, column, area_.right(), caption, styles.strip);
        const Area place{row, column, 1, end - column};
        column = end + 1;
        return place;
    };
    if (shown_.progress.empty())
        add_ = button(addCaption);
    if (shown_.isAskedFor)
        hide_ = button(hideCaption);
    cells.putCut(row, column + 1, area_.right(), shown_.progress, styles.dim);
}

bool StepsPane::press(int row, int column) {
    const int step = row - area_.top - 1;
    if (add_.holds(row, column))
        run_(FirstSteps::addingWord);
    else if (hide_.holds(row, column))
        steps_.askFor(false);
    else if (area_.holds(row, column) && step >= 0 && std::cmp_less(step, shown_.lines.size()))
        click_(std::string(shown_.lines[static_cast<std::size_t>(step)]));
    else
        return false;
    return true;
}

} // namespace larkspin
