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
constexpr int found = 0; // OK in curses.h, which defines too many common names to be used

bool saysTrueColor() {
    const char* const value = std::getenv("COLORTERM");
    const std::string_view depth = value ? value : "";
    return depth == "truecolor" || depth == "24bit";
}

// The library has one current terminal, which may be in use for the screen: it is put back.
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
