#include "platform/terminal/windows/stage.h"

#include "platform/terminal/windows/window_layer.h"

#include <algorithm>
#include <iterator>
#include <tuple>

namespace larkspin {

namespace {

constexpr int leastRows = 7;

int sizeOf(const Area& area) {
    return area.isEmpty() ? 0 : area.rows * area.columns;
}

} // namespace

Area Stage::areaOn(const Area& screen) const {
    const Area usual = whole(screen);
    if (usual.rows >= leastRows)
        return usual;
    return {0, 0, std::max(screen.rows - 1, 1), screen.columns}; // but for the line
}

void Stage::remove(WindowLayer& window) {
    goes(window);
    std::erase(all_, &window);
}

void Stage::refresh() {
    for (std::size_t index = 0; index < all_.size(); ++index)
        all_[index]->refresh();
}

void Stage::appears(WindowLayer& window) {
    windows_.insert(windows_.begin(), &window);
    layers.add(window);
}

// The keyboard goes back from a box to where it was, and from a window to the line.
void Stage::goes(WindowLayer& window) {
    std::erase(windows_, &window);
    std::erase(keyboards_, &window);
    layers.remove(window);
    if (pointedAt_ == &window)
        pointedAt_ = nullptr;
    if (keyboard_ != &window)
        return;
    if (window.rank() == Layer::Rank::box && !keyboards_.empty())
        keyboard_ = keyboards_.back();
    else
        leave();
}

void Stage::goInto(WindowLayer& window) {
    keyboard_ = &window;
    std::erase(keyboards_, &window);
    keyboards_.push_back(&window);
    layers.raise(window);
}

void Stage::leave() {
    keyboard_ = nullptr;
    keyboards_.clear();
    layers.changed();
}

// Boxes come first, since they wait for an answer.
void Stage::cycle(bool backwards) {
    std::vector<WindowLayer*> all = windows_;
    std::stable_partition(all.begin(), all.end(), [](const WindowLayer* window) {
        return window->rank() == Layer::Rank::box;
    });
    all.insert(all.begin(), nullptr); // the line
    const auto now = std::ranges::find(all, keyboard_) - all.begin();
    const auto count = std::ssize(all);
    const auto next = (now + (backwards ? count - 1 : 1)) % count;
    if (WindowLayer* const window = all[static_cast<std::size_t>(next)])
        window->enterByKey();
    else
        leave();
}

// Tried are the edges of the screen and of all other windows.
Area Stage::freePlace(const Window& window, const Area& size, const Area& within) const {
    std::vector<Area> others;
    for (const WindowLayer* const other : windows_)
        if (&other->window() != &window && !other->area().isEmpty())
            others.push_back(other->area());
    std::vector<int> tops{within.top, within.bottom() - size.rows};
    std::vector<int> lefts{within.right() - size.columns, within.left};
    for (const Area& other : others) {
        tops.insert(tops.end(), {other.bottom(), other.top - size.rows, other.top});
        lefts.insert(lefts.end(), {other.left - size.columns, other.right(), other.left});
    }
    Area best{within.top, within.right() - size.columns, size.rows, size.columns};
    auto least = std::tuple(-1, 0, 0);
    for (const int top : tops)
        for (const int left : lefts) {
            const Area place{top, left, size.rows, size.columns};
            if (sizeOf(place.within(within)) < sizeOf(place))
                continue;
            int covered = 0;
            for (const Area& other : others)
                covered += sizeOf(place.within(other));
            const auto cost = std::tuple(covered, within.right() - place.right(), top - within.top);
            if (std::get<0>(least) < 0 || cost < least) {
                least = cost;
                best = place;
            }
        }
    return best;
}

const WindowLayer* Stage::find(const Window& described) const {
    const auto found = std::ranges::find_if(
        windows_, [&](const WindowLayer* window) { return &window->window() == &described; });
    return found == windows_.end() ? nullptr : *found;
}

void Stage::moveAlong(const Window& moved, int rows, int columns) const {
    for (WindowLayer* const window : windows_)
        if (window->window().standsOn == &moved)
            window->shift(rows, columns);
}

} // namespace larkspin
