// The colours of the program's own windows: brought back at a start, given when the owner has
// chosen one, and kept at exit.
#pragma once

#include "companions/color_slots.h"
#include "shell/settings.h"
#include "shell/window.h"

#include <utility>
#include <vector>

namespace larkspin {

class WindowColors {
public:
    // Gives all windows of the program, which must outlive this.
    void connect(std::vector<Window*> windows) { windows_ = std::move(windows); }

    // Every control gets its stored colour, or the one it was designed with when none is stored.
    void load(const StoredSettings& stored);
    void save(SettingsChanges& changes) const;

    // Colours the slot's controls, but for those that take a new colour only at the next start.
    void giveAtOnce(const ColorSlot& slot, Color color);

private:
    // Nothing when there is no such control.
    Color* find(ColorSlot::Kind kind, std::string_view window, std::string_view control) const;

    std::vector<Window*> windows_;
};

} // namespace larkspin
