#include "platform/terminal/windows/window_sum.h"

#include "shell/control_events.h"
#include "text/row_list.h"

#include <functional>
#include <string>

namespace larkspin {

namespace {

void addTo(std::size_t& sum, std::size_t value) {
    sum = (sum ^ value) * 1099511628211u;
}

} // namespace

std::size_t sumOfSeen(const Window& window) {
    std::size_t sum = window.background;
    const Place& place = window.place;
    for (const int part : {place.width, place.height, place.left, place.top})
        addTo(sum, static_cast<std::size_t>(part));
    for (const Control& control : window.controls) {
        addTo(sum, isOnWindow(window, control));
        addTo(sum, control.foreground);
        addTo(sum, control.background);
        if (control.text)
            addTo(sum, std::hash<std::string>()(control.text()));
        if (control.rows)
            addTo(sum, control.rows->revision());
        if (control.markedRow)
            addTo(sum, static_cast<std::size_t>(control.markedRow()));
        if (control.value)
            addTo(sum, static_cast<std::size_t>(control.value()));
    }
    return sum;
}

} // namespace larkspin
