// The words in which a window's unit lists what stands on it: one per kind of control, those for
// the strip that every window bears at its top, and what a control shows.
//
//     return {titleStrip(loop_, notez, {.name = "Label1", .text = caption("notes")}),
//             closeLabel(notez, {.name = "Label5"}),
//             button({.name = "Label6", .place = {0, 345, 600, 285}, .text = caption("edit"), ...
#pragma once

#include "shell/window.h"

#include <string>
#include <string_view>

namespace larkspin {

// Twips: the strip by which a window is moved, and the label in its corner.
inline constexpr int stripHeight = 315;
inline constexpr int closeWidth = 330;

inline constexpr std::string_view closeSpoken = "close"; // what the label there is called

// Each completes what the control's description names.
Control label(Control described);
Control button(Control described);
Control listBox(Control described);
Control textField(Control described);
Control slider(Control described);
Control combo(Control described);
Control swatch(Control described);

// Along the top of the window, as wide as that is now, but for the corner of the close label.
Control titleStrip(EventLoop& loop, Window& window, Control described);

// In the window's upper right corner. It hides the window unless it is told to do something else.
Control closeLabel(Window& window, Control described);

// What a control shows: always the same, or what a field reads at the moment.
std::function<std::string()> caption(std::string text);
std::function<std::string()> shows(const std::string& field);

} // namespace larkspin
