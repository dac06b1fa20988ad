// Where a described window and its controls stand on the screen: in a frame whose upper side is the
// strip by which the window is moved. The owner moves it; else it stands where its description
// says, or beside others. It never leaves the part of the screen that windows have. One that is
// higher is scrolled.
#pragma once

#include "platform/terminal/windows/cell_layout.h"
#include "platform/terminal/windows/control_drawing.h"
#include "platform/terminal/windows/stage.h"
#include "shell/window.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace larkspin {

class WindowFrame {
public:
    WindowFrame(const Stage& stage, Window& window, bool isBox)
        : stage_(stage), window_(window), isBox_(isBox) {}

    // As the window appears. It gets a place when it is drawn.
    void appear();
    // On so much of the screen. The control of that name is brought into sight.
    void layOutOn(const Area& whole, const std::string& focus);
    void draw(Cells& cells, bool hasKeyboard) const;

    const Area& area() const { return area_; }  // on the screen, since it was drawn last
    Area spotOf(std::size_t index) const;       // of a control; perhaps outside of what is seen
    Area clipFor(const Control& control) const; // on which it is seen
    std::string controlAt(int row, int column) const; // empty for none
    ControlState& stateOf(std::size_t index) { return states_[index]; }
    std::size_t count() const { return states_.size(); } // of those controls

    void scroll(int rows) { scrolled_ += rows; }
    // By the owner. What stands on the window moves with it.
    void moveTo(int top, int left);
    // With the window that it stands on.
    void shift(int rows, int columns);

private:
    void place(const Area& size);
    std::optional<Area> placeOnOther(const Area& size) const;
    void bringIntoSight(const std::string& control);
    void stand(const Cursor& at);
    int stripRows() const { return layout_.hasStrip ? 1 : 0; }
    int hiddenRows() const { return layout_.rows - stripRows() - inside_.rows; }

    const Stage& stage_;
    Window& window_;
    bool isBox_;
    CellLayout layout_;
    std::vector<int> needed_; // columns of each control; they don't shrink while it is shown
    std::vector<ControlState> states_;
    Area whole_, area_, inside_; // on the screen; where its controls are below the strip
    Cursor home_;                // where it stands if the screen has room for that
    int scrolled_ = 0;           // rows
    bool isPlaced_ = false, isMoved_ = false;
    std::pair<int, int> asked_; // where the description wanted it
};

} // namespace larkspin
