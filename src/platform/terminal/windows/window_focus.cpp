#include "platform/terminal/windows/window_focus.h"

#include "platform/terminal/windows/cell_layout.h"
#include "platform/terminal/windows/control_keys.h"
#include "shell/control_events.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace larkspin {

bool WindowFocus::hasPlace() const {
    return std::ranges::any_of(window_.controls, [this](const Control& each) {
        return isShown(window_, each) && takesFocus(each);
    });
}

const Control* WindowFocus::control() const {
    const Control* const control = window_.find(name_);
    return control && isShown(window_, *control) ? control : nullptr;
}

void WindowFocus::point(const Control& control) {
    isByKey_ = false;
    if (takesFocus(control))
        name_ = control.name;
}

void WindowFocus::enter() {
    isByKey_ = true;
    if (control())
        return;
    name_.clear();
    for (const bool alsoOnStrip : {false, true})
        for (const Control& each : window_.controls)
            if (name_.empty() && isShown(window_, each) && takesFocus(each) &&
                (alsoOnStrip || !isOnStrip(each)))
                name_ = each.name;
}

void WindowFocus::move(int way) {
    std::vector<std::string> names;
    for (const Control& each : window_.controls)
        if (isShown(window_, each) && takesFocus(each))
            names.push_back(each.name);
    isByKey_ = true;
    if (names.empty())
        return;
    const auto count = std::ssize(names);
    const auto now = std::ranges::find(names, name_) - names.begin();
    const auto next = now == count ? (way > 0 ? 0 : count - 1) : (now + way + count) % count;
    name_ = names[static_cast<std::size_t>(next)];
}

} // namespace larkspin
