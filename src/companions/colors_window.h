// The colour window `colors`: three bars mix a colour, which goes to the slot that the owner has
// chosen. The colours of windows come from the swatch, those of the style from the text field,
// where he can write one by hand.
#pragma once

#include "chat/core.h"
#include "shell/window.h"
#include "text/row_list.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace larkspin {

class WindowColors;

class ColorsWindow {
public:
    ColorsWindow(const Core& core, WindowColors& windowColors);

    // The command, and the tray's entry, which does the same without saying anything.
    void color();
    void show();

    // Hides the window, puts it in its first place and forgets the mixed colour, as it is when a
    // run begins.
    void reset();

    Window colors{.name = "colors", .spoken = "larkspin colors"};

private:
    std::vector<Control> controls();
    Control bar(const char* name, const char* spoken, std::size_t part);
    Control digits(const char* name, const char* spoken, std::size_t part);
    void mix(std::size_t part, int value);
    void apply();

    Settings& settings_;
    EventLoop& loop_;
    Dialogs& dialogs_;
    Reply& reply_;
    WindowColors& windowColors_;

    std::array<std::uint8_t, 3> parts_{}; // red, green, blue: where the bars stand
    std::string tag_;                     // what the text field reads
    RowList slots_;                       // by name, in the order of the table
};

} // namespace larkspin
