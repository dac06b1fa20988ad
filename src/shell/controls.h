// The words in which a window's unit lists what stands on it: one per kind of control, those for
// the strip that every window bears at its top, and what a control shows.
//
//     return {titleStrip(loop_, notez, {.name = "Label1", .text = caption("notes")}),
//             closeLabel(notez, {.name = "Label5"}),
//             button({.name = "Label6", .place = {0, 345, 600, 285}, .text = caption("edit"), ...
#pragma once

#include "shell/window.h"

#include <string>
#include <utility>

namespace larkspin {

// Twips: the strip by which a window is moved, and the label in its corner.
inline constexpr int stripHeight = 315;
inline constexpr int closeWidth = 330;

inline Control ofKind(Control::Kind kind, Control described) {
    described.kind = kind;
    return described;
}

inline Control label(Control described) {
    return ofKind(Control::Kind::label, std::move(described));
}

inline Control button(Control described) {
    return ofKind(Control::Kind::button, std::move(described));
}

inline Control listBox(Control described) {
    return ofKind(Control::Kind::list, std::move(described));
}

inline Control textField(Control described) {
    return ofKind(Control::Kind::textField, std::move(described));
}

inline Control slider(Control described) {
    return ofKind(Control::Kind::slider, std::move(described));
}

inline Control combo(Control described) {
    return ofKind(Control::Kind::combo, std::move(described));
}

inline Control swatch(Control described) {
    return ofKind(Control::Kind::swatch, std::move(described));
}

// Along the top of the window, as wide as that is now, but for the corner of the close label.
inline Control titleStrip(EventLoop& loop, Window& window, Control described) {
    described.place = {0, 0, window.place.width - closeWidth, stripHeight};
    described.onMouseDown = [&loop, &window] { dragwindow(loop, window); };
    return label(std::move(described));
}

// In the window's upper right corner. It hides the window unless it is told to do something else.
inline Control closeLabel(Window& window, Control described) {
    described.place = {window.place.width - closeWidth, 0, closeWidth, stripHeight};
    described.spoken = "close";
    described.text = [] { return "  X"; };
    if (!described.onClick)
        described.onClick = [&window] { window.visible = false; };
    return button(std::move(described));
}

// What a control shows: always the same, or what a field reads at the moment.
inline std::function<std::string()> caption(std::string text) {
    return [text = std::move(text)] { return text; };
}

inline std::function<std::string()> shows(const std::string& field) {
    return [&field] { return field; };
}

} // namespace larkspin
