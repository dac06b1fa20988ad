#include "companions/window_colors.h"

#include "text/number.h"

#include <optional>
#include <string>

namespace larkspin {

namespace {

constexpr Color white = 0xFFFFFF;

// A number with a fraction is no colour: rounding it would only hide that something is wrong with
// the stored value.
std::optional<Color> storedColor(const std::string& value) {
    const auto wanted = number(value);
    if (!wanted || *wanted < 0 || *wanted > white)
        return std::nullopt;
    const auto color = static_cast<Color>(rounded(*wanted));
    return color == *wanted ? std::optional(color) : std::nullopt;
}

bool isOfWindows(const ColorSlot& slot) {
    return slot.kind != ColorSlot::Kind::styleColor;
}

} // namespace

void WindowColors::load(const StoredSettings& stored) {
    for (const ColorSlot& slot : colorSlots()) {
        const auto color = storedColor(stored.get(slot.key));
        for (const ColoredControl& control : slot.controls)
            if (Color* const shown = find(slot.kind, control.window, control.name))
                *shown = color.value_or(slot.design);
    }
}

void WindowColors::save(SettingsChanges& changes) const {
    for (const ColorSlot& slot : colorSlots()) {
        if (!isOfWindows(slot))
            continue;
        if (const Color* const shown = find(slot.kind, "mp3s", slot.savedFrom))
            changes.emplace_back(slot.key, numberText(*shown));
    }
}

void WindowColors::giveAtOnce(const ColorSlot& slot, Color color) {
    for (const ColoredControl& control : slot.controls) {
        Color* const shown = find(slot.kind, control.window, control.name);
        if (shown && !control.atNextStart)
            *shown = color;
    }
}

Color* WindowColors::find(ColorSlot::Kind kind, std::string_view windowName,
                          std::string_view name) const {
    for (Window* window : windows_) {
        if (window->name != windowName)
            continue;
        // The window itself is meant.
        if (name.empty())
            return &window->background;
        Control* const control = window->find(std::string(name));
        if (!control)
            return nullptr;
        return kind == ColorSlot::Kind::foreground ? &control->foreground : &control->background;
    }
    return nullptr;
}

} // namespace larkspin
