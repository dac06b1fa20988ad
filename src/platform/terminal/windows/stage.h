// What the windows on a terminal share: which of them has the keyboard, where they stand, and whom
// they tell of the owner's hand. The line to type in has the keyboard until he goes into a window.
#pragma once

#include "platform/terminal/screen/layers.h"
#include "platform/terminal/windows/menu_layer.h"

#include <functional>
#include <vector>

namespace larkspin {

class WindowLayer;
struct Window;

class Stage {
public:
    Stage(EventLoop& loop, Layers& shown) : layers(shown), menu(loop, shown) {}
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    Layers& layers;
    MenuLayer menu;

    // What others tell, and are told. To be set before the first window is shown. `whole` is where
    // windows may stand.
    std::function<Area(const Area& screen)> whole = [](const Area& screen) { return screen; };
    std::function<TwoColors()> colors = [] { return TwoColors(); }; // of boxes and menus
    std::function<bool()> isLineBegun = [] { return false; };       // something stands in the line
    Task pressed = [] {};                                           // the owner presses something
    Task titleMenu = [] {}; // he asks for the tray icon's menu

    // The same, or most of a screen that is too low for that.
    Area areaOn(const Area& screen) const;

    // Those that are to be brought up to date, shown or not.
    void add(WindowLayer& window) { all_.push_back(&window); }
    void remove(WindowLayer& window);
    void refresh();

    // A window that appears stands above the others; the keyboard stays where it is.
    void appears(WindowLayer& window);
    void goes(WindowLayer& window);

    bool hasWindows() const { return !windows_.empty(); } // that are shown
    bool hasKeyboard(const WindowLayer& window) const { return keyboard_ == &window; }
    // Null when the line has it.
    const WindowLayer* keyboard() const { return keyboard_; }
    // The one that the mouse was over last.
    bool isPointedAt(const WindowLayer& window) const { return pointedAt_ == &window; }
    void pointAt(const WindowLayer& window) { pointedAt_ = &window; }
    void goInto(WindowLayer& window);
    void leave();
    // From the line to the window that came up last, to those before it, and back to the line.
    void cycle(bool backwards);

    // The best place for a window that comes up by itself: it covers no other, if there is room,
    // and as little of the text on the left as it can.
    Area freePlace(const Window& window, const Area& size, const Area& within) const;
    // Null when it isn't shown.
    const WindowLayer* find(const Window& described) const;
    // What stands on a window moves with it.
    void moveAlong(const Window& moved, int rows, int columns) const;

private:
    std::vector<WindowLayer*> all_;
    std::vector<WindowLayer*> windows_;   // that are shown; that came up last in front
    std::vector<WindowLayer*> keyboards_; // which of them had the keyboard since it left the line
    WindowLayer* keyboard_ = nullptr;
    const WindowLayer* pointedAt_ = nullptr;
};

} // namespace larkspin
