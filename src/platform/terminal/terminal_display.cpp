#include "platform/terminal/terminal_display.h"

#include <bit>
#include <cstdlib>
#include <string_view>
#include <sys/ioctl.h>
#include <term.h>
#include <unistd.h>

namespace larkspin {

namespace {

constexpr int trueColorBits = 24;
constexpr int found = 0; // curses.h calls it OK, and much else by names that it takes from others

bool saysTrueColor() {
    const char* const value = std::getenv("COLORTERM");
    const std::string_view depth = value ? value : "";
    return depth == "truecolor" || depth == "24bit";
}

// The library keeps one terminal's description as the current one, which may be somebody else's.
int colorBits(int descriptor) {
    if (saysTrueColor())
        return trueColorBits;
    TERMINAL* const others = ::set_curterm(nullptr);
    int failure = 0, colors = 0;
    char name[] = "colors";
    if (::setupterm(nullptr, descriptor, &failure) == found) {
        colors = ::tigetnum(name);
        ::del_curterm(::set_curterm(others));
        return colors > 1 ? static_cast<int>(std::bit_width(static_cast<unsigned>(colors - 1))) : 1;
    }
    ::set_curterm(others);
    return 0;
}

} // namespace

DisplaySize terminalDisplay(int descriptor) {
    winsize size{};
    if (!::isatty(descriptor) || ::ioctl(descriptor, TIOCGWINSZ, &size) != 0)
        return {};
    return {colorBits(descriptor), size.ws_col, size.ws_row};
}

} // namespace larkspin
