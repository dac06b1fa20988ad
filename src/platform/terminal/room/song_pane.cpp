#include "platform/terminal/room/song_pane.h"

#include "platform/terminal/screen/columns.h"
#include "playback/sliders.h"

#include <algorithm>
#include <string>
#include <utility>

namespace larkspin {

namespace {

// From how many columns on a part stands there.
constexpr int leastForTime = 28, leastForMode = 50, leastForVolume = 60, leastForSteps = 66,
              leastForPosition = 76, leastForVolumeSlider = 110;
constexpr int betweenParts = 2, volumeWidth = 10, mostPosition = 40; // columns
constexpr int volumeOfTurn = 5, secondsOfTurn = 5;                   // by a notch of the wheel

std::string markOf(const SongView& view) {
    switch (view.status) {
    case SongView::Status::playing:
        return "►";
    case SongView::Status::paused:
        return "║";
    case SongView::Status::stopped:
        break;
    }
    return "■";
}

// What a place on a slider means.
int valueAt(const Area& slider, int column, int most) {
    const int steps = std::max(slider.columns - 1, 1);
    return std::clamp(column - slider.left, 0, steps) * most / steps;
}

} // namespace

void SongPane::draw(Cells& cells, const Area& area, const SongView& view,
                    const RoomStyles& styles) {
    area_ = area;
    view_ = view;
    previous_ = play_ = next_ = position_ = volume_ = mode_ = {};
    cells.fill(area, styles.strip);
    if (area.isEmpty())
        return;
    const int left = drawLeft(cells, styles), right = drawRight(cells, styles);
    const bool plays = view.status == SongView::Status::playing;
    cells.putCut(area.top, left, right, view.title(), plays ? styles.stripName : styles.stripDim);
}

// Gives where the name begins.
int SongPane::drawLeft(Cells& cells, const RoomStyles& styles) {
    int column = area_.left;
    const auto put = [&](Area& part, const std::string& mark, const CellStyle& style) {
        part = {area_.top, column, 1, 3};
        cells.put(area_.top, column + 1, area_.right(), mark, style);
        column += 2;
    };
    const bool hasSteps = area_.columns >= leastForSteps;
    const CellStyle& steps = view_.hasList ? styles.strip : styles.stripDim;
    if (hasSteps)
        put(previous_, "«", steps);
    put(play_, markOf(view_), view_.canPlay() ? styles.stripName : styles.stripDim);
    if (hasSteps)
        put(next_, "»", steps);
    previous_.columns = play_.columns = 2;
    return column + 1;
}

// From the right on. Gives where the name must end.
int SongPane::drawRight(Cells& cells, const RoomStyles& styles) {
    int right = area_.right() - 1;
    const auto take = [&](int columns) {
        right -= columns;
        return Area{area_.top, right, 1, columns};
    };
    const auto put = [&](const std::string& text, const CellStyle& style) {
        const Area part = take(columnsOf(text));
        cells.put(part.top, part.left, part.right(), text, style);
        right -= betweenParts;
        return part;
    };
    if (area_.columns >= leastForMode)
        mode_ = put(wordFor(view_.mode), styles.strip);
    if (area_.columns >= leastForVolumeSlider) {
        volume_ = take(volumeWidth);
        drawSlider(cells, volume_, view_.volume, Sliders::mostVolume, styles);
        --right;
    }
    if (area_.columns >= leastForVolume)
        put("vol " + std::to_string(view_.volume), styles.strip);
    if (area_.columns >= leastForPosition && view_.length > 0) {
        position_ = take(std::min(area_.columns / 5, mostPosition));
        drawSlider(cells, position_, view_.position, view_.length, styles);
        right -= betweenParts;
    }
    const std::string time = view_.timeAt(view_.position);
    if (area_.columns >= leastForTime && !time.empty())
        put(time, styles.strip);
    return right;
}

void SongPane::drawSlider(Cells& cells, const Area& area, int value, int most,
                          const RoomStyles& styles) {
    const int steps = area.columns - 1,
              handle = most > 0 ? std::min(value, most) * steps / most : 0;
    for (int column = 0; column < area.columns; ++column)
        cells.put(area.top, area.left + column, area.right(), column <= handle ? "═" : "─",
                  column <= handle ? styles.stripName : styles.stripDim);
}

bool SongPane::take(const MouseStroke& stroke) {
    using Kind = MouseStroke::Kind;
    if (stroke.kind == Kind::move || stroke.kind == Kind::release) {
        drag(stroke);
        return true;
    }
    held_ = Held::nothing;
    if (!area_.holds(stroke.row, stroke.column))
        return false;
    if (stroke.kind == Kind::wheelUp || stroke.kind == Kind::wheelDown)
        turn(stroke);
    else if (stroke.kind == Kind::press && stroke.button == MouseStroke::Button::left)
        return press(stroke);
    return true;
}

bool SongPane::press(const MouseStroke& stroke) {
    const auto isOn = [&](const Area& part) { return part.holds(stroke.row, stroke.column); };
    if (isOn(previous_))
        works_.previous();
    else if (isOn(play_))
        works_.playOrPause();
    else if (isOn(next_))
        works_.next();
    else if (isOn(position_))
        held_ = Held::position;
    else if (isOn(volume_))
        held_ = Held::volume;
    else if (isOn(mode_))
        works_.openModes();
    drag(stroke);
    return true;
}

// The volume follows the hand; the song is moved once, where that lets go.
void SongPane::drag(const MouseStroke& stroke) {
    const bool isLetGo = stroke.kind == MouseStroke::Kind::release;
    const Held held = held_;
    if (isLetGo)
        held_ = Held::nothing;
    if (held == Held::volume)
        works_.setVolume(valueAt(volume_, stroke.column, Sliders::mostVolume));
    else if (held == Held::position && isLetGo)
        works_.moveTo(valueAt(position_, stroke.column, view_.length), view_.path);
}

// On the position it seeks, elsewhere it is the volume's.
void SongPane::turn(const MouseStroke& stroke) {
    const int way = stroke.kind == MouseStroke::Kind::wheelUp ? 1 : -1;
    if (position_.holds(stroke.row, stroke.column))
        works_.moveTo(view_.position + way * secondsOfTurn, view_.path);
    else
        works_.setVolume(std::clamp(view_.volume + way * volumeOfTurn, 0, Sliders::mostVolume));
}

} // namespace larkspin
