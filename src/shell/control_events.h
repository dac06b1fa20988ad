// What the owner's hand does to a described control. All that shows windows comes through here, so
// that a press means the same on a desktop, in a terminal and in a test.
//
// Controls are named by window and name, rows count from 0. Each call returns true when it reached
// the control. With nothing to reach (no such control, one that isn't shown, another kind, a row
// outside its list) nothing happens. An event that the control has no use for reaches it without
// effect. Handlers may wait, close the window, change its rows or its controls. So nothing is held
// across a handler, and the rest of a gesture is left out when the control that it was meant for
// has gone.
#pragma once

#include "shell/window.h"

#include <string>
#include <vector>

namespace larkspin {

// Visible, and not cut off by the window's edge: a window that has been made small shows only what
// lies within.
bool isOnWindow(const Window& window, const Control& control);

// The same on a window that is visible itself.
bool isShown(const Window& window, const Control& control);

// A row of a list or combo that nothing is pressed on.
inline constexpr int noRow = -1;

// The button going down on the control: its mouse-down event, and in a list the row under the mouse
// becomes current and the only one selected.
bool mouseDown(Window& window, const std::string& control, int row = noRow);

// The button coming up again over the control that it went down on. A list takes a click on a row
// only.
bool click(Window& window, const std::string& control, int row = noRow);

// The button going down again so soon after a click that the two belong together.
bool doubleClick(Window& window, const std::string& control, int row = noRow);

// The button going down and coming up again: a mouse-down, then a click. A combo takes the row.
bool press(Window& window, const std::string& control, int row = noRow);

// A press, and the double click after it.
bool pressTwice(Window& window, const std::string& control, int row = noRow);

// A press without a mouse: by the keyboard, or from a screen reader. A list, and a control that
// reacts to a double click only, gets one.
void pressWithoutMouse(Window& window, const std::string& control, int row = noRow);

// Selects these rows of a list and no others; the last of them becomes current. A list that doesn't
// select many takes one row. To the list it is a click.
bool selectRows(Window& window, const std::string& control, const std::vector<int>& rows);

bool pressKey(Window& window, const std::string& control, Key key);

// Asks a list for the menu of a row, or of its current one. The row becomes current; a selection
// stays if the row belongs to it. False for what has no menu.
bool askMenu(Window& window, const std::string& control, int row = noRow);

// The mouse moving over the control.
bool hover(Window& window, const std::string& control);

// Moves a slider. A value outside its range moves it to the nearer end; the value that it has
// already changes nothing.
bool moveSlider(Window& window, const std::string& control, int value);

// Takes a row of a combo.
bool chooseRow(Window& window, const std::string& control, int row);

// Lets go of files and directories over the window, told by drive paths.
bool drop(Window& window, const std::vector<std::string>& paths);

// A press on the label that closes the window. False for a window that has none.
bool closeWindow(Window& window);

// Makes a text field read this.
bool editText(Window& window, const std::string& control, const std::string& text);

} // namespace larkspin
