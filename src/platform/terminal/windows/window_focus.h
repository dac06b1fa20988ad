// Which control of a window has the focus, and whether keys have led to it or the mouse.
#pragma once

#include "shell/window.h"

#include <string>
#include <utility>

namespace larkspin {

class WindowFocus {
public:
    explicit WindowFocus(Window& window) : window_(window) {}

    // Whether there is any that keys can be led to.
    bool hasPlace() const;
    // Null when it is on none that is shown.
    const Control* control() const;
    const std::string& name() const { return name_; }
    bool isByKey() const { return isByKey_; }

    void set(std::string control) { name_ = std::move(control); }
    void clear() { name_.clear(); }
    // By the mouse; what takes no focus leaves it where it was.
    void point(const Control& control);
    // By a key: where it was, or to the first below the strip.
    void enter();
    // In the order of the controls, round the ends.
    void move(int way);

private:
    Window& window_;
    std::string name_;
    bool isByKey_ = false;
};

} // namespace larkspin
