#include "shell/controls.h"

#include <utility>

namespace larkspin {

namespace {

Control ofKind(Control::Kind kind, Control described) {
    described.kind = kind;
    return described;
}

} // namespace

Control label(Control described) {
    return ofKind(Control::Kind::label, std::move(described));
}

Control button(Control described) {
    return ofKind(Control::Kind::button, std::move(described));
}

Control listBox(Control described) {
    return ofKind(Control::Kind::list, std::move(described));
}

Control textField(Control described) {
    return ofKind(Control::Kind::textField, std::move(described));
}

Control slider(Control described) {
    return ofKind(Control::Kind::slider, std::move(described));
}

Control combo(Control described) {
    return ofKind(Control::Kind::combo, std::move(described));
}

Control swatch(Control described) {
    return ofKind(Control::Kind::swatch, std::move(described));
}

Control titleStrip(EventLoop& loop, Window& window, Control described) {
    described.place = {0, 0, window.place.width - closeWidth, stripHeight};
    described.onMouseDown = [&loop, &window] { dragwindow(loop, window); };
    return label(std::move(described));
}

Control closeLabel(Window& window, Control described) {
    described.place = {window.place.width - closeWidth, 0, closeWidth, stripHeight};
    described.spoken = closeSpoken;
    described.text = [] { return "  X"; };
    if (!described.onClick)
        described.onClick = [&window] { window.visible = false; };
    return button(std::move(described));
}

std::function<std::string()> caption(std::string text) {
    return [text = std::move(text)] { return text; };
}

std::function<std::string()> shows(const std::string& field) {
    return [&field] { return field; };
}

} // namespace larkspin
