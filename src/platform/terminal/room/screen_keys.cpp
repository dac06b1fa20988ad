#include "platform/terminal/room/screen_keys.h"

#include <string>
#include <string_view>
#include <utility>

namespace larkspin {

namespace {

constexpr std::string_view keysTold[] = {
    "F1: all words; F10 or Alt+M: the menus; F9: the tray's menu, with Shift the media window",
    "Page Up, Page Down: reads on above and comes back; Alt+Home, Alt+End: to the ends",
    "Alt+1 to Alt+9, Alt+0: the room with that number, home; Alt+Up, Alt+Down: those beside it; "
    "Alt+A: where something is unread",
    "Alt+P: the people; Alt+L: the links said last",
    "F6: into the windows, one after the other, and back to the line; Tab does so from an empty "
    "line",
    "in a window: Tab and arrows from part to part, Return or Space presses, Delete removes, "
    "Shift+F10 opens a row's menu, Alt with arrows moves it, Escape closes",
    "in the line: Tab completes, arrows bring back what was typed, Ctrl+A and Ctrl+E go to its "
    "ends, Ctrl+W, Ctrl+U and Ctrl+K cut, Ctrl+Y puts back",
    "Ctrl+C: empties the line; Ctrl+D in an empty line: ends; Ctrl+L: draws anew; Ctrl+Z: stops "
    "until the shell goes on",
    "/mouse: leaves the mouse to the terminal, to copy text, as Shift does in most for once",
};

} // namespace

SlashWord keysWord(SlashWords::Tell tell) {
    const auto tellAll = [tell = std::move(tell)](std::string_view rest) {
        for (const std::string_view line : keysTold)
            if (rest.empty())
                tell(std::string(line));
        return rest.empty();
    };
    return {.name = "keys",
            .arguments = "",
            .help = "tells what the keys do",
            .run = tellAll,
            .topic = "larkspin"};
}

} // namespace larkspin
