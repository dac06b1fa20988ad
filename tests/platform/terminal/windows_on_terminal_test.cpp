// The program's windows on a real terminal that can be read back: keys and the mouse as bytes.
#include "support/tmux.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <optional>
#include <utility>

namespace larkspin {
namespace {

class WindowsOnTerminal : public testing::TestWithParam<std::pair<int, int>> {
protected:
    WindowsOnTerminal() {
        disk.write("larkspin/larkspin.ini", "[lark]\r\nload=2\r\ntrigger='\r\n");
        disk.write("larkspin/temp.lst", "");
        disk.write("music/ride.mp3", "no song");
        auto variables = ownHome(disk.path().native());
        variables.push_back("TERM=tmux-256color");
        const auto [columns, rows] = GetParam();
        terminal.emplace(LARKSPIN_TTY, variables, columns, rows);
        EXPECT_TRUE(terminal->shows("load:"));
    }
    void types(std::string_view bytes, std::string_view shown) {
        terminal->type(bytes);
        EXPECT_TRUE(terminal->shows(shown)) << terminal->screen();
    }
    // Presses what reads so, so many columns after its beginning.
    void clicks(std::string_view text, std::string_view shown, int columns = 1) {
        ASSERT_TRUE(terminal->shows(text)) << text << " in\n" << terminal->screen();
        const std::string screen = terminal->screen();
        const std::size_t at = screen.find(text);
        const std::string_view before = std::string_view(screen).substr(0, at);
        const std::size_t begin = before.rfind('\n') + 1;
        const auto row = std::ranges::count(before, '\n') + 1;
        const auto column = std::ranges::count_if(before.substr(begin), [](char byte) {
            return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
        });
        const std::string place = std::to_string(column + 1 + columns) + ';' + std::to_string(row);
        terminal->type("\x1b[<0;" + place + "M\x1b[<0;" + place + 'm');
        EXPECT_TRUE(terminal->shows(shown)) << text << '\n' << terminal->screen();
    }
    void goes(std::string_view bytes, std::string_view lost) {
        terminal->type(bytes);
        EXPECT_TRUE(terminal->loses(lost)) << terminal->screen();
    }

    TempDirectory disk;
    std::optional<Tmux> terminal;
};

constexpr std::string_view escape = "\x1b", f6 = "\x1b[17~", f9 = "\x1b[20~";

} // namespace

TEST_P(WindowsOnTerminal, AreWorkedByTheMouse) {
    types("'nshow\r", "larkspin player notes");
    clicks("[add a note]", "what would you like to add");
    types("milk and br\xC3\xB6tchen\r", "milk and br\xC3\xB6tchen");
    EXPECT_TRUE(terminal->loses("what would you like to add"));
    clicks("milk and", "\xE2\x94\x82 milk and"); // the note below the list
    clicks("[clear notes]", "[add a note]");
    EXPECT_TRUE(terminal->loses("milk and br\xC3\xB6tchen"));
    clicks(" \xC3\x97 ", "nshow");
    EXPECT_TRUE(terminal->loses("larkspin player notes"));
    types("'color\r", "color options");
    clicks("\xE2\x96\x88\xE2\x94\x80", "<font color=#", 12);
    clicks(" \xE2\x96\xBC", "\xE2\x88\x9A"); // the combo's rows, with a check mark
    goes(escape, "\xE2\x88\x9A");
}

TEST_P(WindowsOnTerminal, AreWorkedByKeys) {
    types("'apps\r", "applications n shit");
    terminal->type(f6);
    types("\t\t\r", "Open applications n shit"); // from the list past its path to the button
    types("~/music\r", "music");
    goes(escape, "Open applications n shit");
    goes(escape, "[add]");
    types("still in the line\r", "still in the line");
    types(f9, "restart program");
    goes(escape, "restart program");
    types("/tray\r", "[rename]");
    types("/show mp3s\r", "mp3s.renameLabel");
    types("/click mp3s.Command2\r", "remove string");
    goes(escape, "remove string");
}

INSTANTIATE_TEST_SUITE_P(At, WindowsOnTerminal,
                         testing::Values(std::pair(80, 24), std::pair(120, 35),
                                         std::pair(200, 60)));

} // namespace larkspin
