// The terminal program on the whole screen of a terminal that can be read back.
#include "support/tmux.h"

#include <algorithm>
#include <csignal>
#include <gtest/gtest.h>
#include <random>

namespace larkspin {
namespace {

struct FullScreenTest : testing::Test {
    // Not the first start, which says much.
    FullScreenTest() { disk.write("larkspin/larkspin.ini", "[lark]\r\nload=2\r\ntrigger='\r\n"); }

    // A shell runs it, and tells in which state it leaves the terminal.
    std::string command(const std::string& program = LARKSPIN_TTY) const {
        return "stty -echoctl; echo before; " + program + " 2>" + disk.path().native() +
               "/errors; echo status $?; stty -a; cat";
    }
    std::vector<std::string> variables(const std::string& kind = "tmux-256color") const {
        auto all = ownHome(disk.path().native());
        all.push_back("TERM=" + kind);
        return all;
    }
    static void expectShown(const Tmux& terminal, std::string_view typed, std::string_view shown) {
        terminal.type(typed);
        EXPECT_TRUE(terminal.shows(shown)) << terminal.screen();
    }
    // It is there, and does what is said.
    static void expectVolume(const Tmux& terminal, const std::string& volume) {
        expectShown(terminal, "\x1b", ""); // whatever is open
        expectShown(terminal, "\x15'volume " + volume + "\r", "vol " + volume);
    }
    // The terminal is as it was found, and all is saved.
    void expectEnd(const Tmux& terminal, const std::string& volume) const {
        EXPECT_TRUE(terminal.shows("status 0")) << terminal.screen();
        EXPECT_TRUE(terminal.shows("isig icanon"));
        expectSaved(volume);
    }
    void expectSaved(const std::string& volume) const {
        EXPECT_TRUE(comes([&] {
            return disk.read("larkspin/larkspin.ini").find("\nvolume=" + volume + "\r") !=
                   std::string::npos;
        }));
        EXPECT_EQ(disk.read("errors"), "");
    }

    TempDirectory disk;
};

TEST_F(FullScreenTest, IsForEveryKindOfTerminalAndGivesItBack) {
    const struct {
        std::string kind;
        int columns, rows;
        std::string_view end;
        bool hasSecondScreen;
    } kinds[] = {{"tmux-256color", 120, 35, "\x04", true},
                 {"xterm-256color", 80, 24, "/quit\r", true},
                 {"screen", 60, 16, "'exit\r", true},
                 {"linux", 80, 24, "\x04", false},
                 {"vt100", 80, 24, "\x04", false}};
    int volume = 10;
    for (const auto& [kind, columns, rows, end, hasSecondScreen] : kinds) {
        SCOPED_TRACE(kind);
        const Tmux terminal(command(), variables(kind), columns, rows);
        EXPECT_TRUE(terminal.shows("load:")) << terminal.screen();
        expectVolume(terminal, std::to_string(++volume));
        EXPECT_EQ(terminal.tell("mouse_sgr_flag"), kind == "vt100" ? "0" : "1");
        const bool isTurned = terminal.styled().find("\x1b[7m") != std::string::npos;
        EXPECT_EQ(isTurned, kind == "vt100") << "strips, where there are no colours";
        terminal.type(end);
        expectEnd(terminal, std::to_string(volume));
        EXPECT_EQ(terminal.tell("mouse_any_flag"), "0");
        EXPECT_EQ(terminal.screen().find("before") != std::string::npos, hasSecondScreen);
    }
}

TEST_F(FullScreenTest, IsLeftToLinesWhereNothingCanBeDrawn) {
    const std::pair<std::string, std::string_view> kinds[] = {
        {"dumb", "can't be drawn on: lines come one below the other\n"},
        {"unheard-of", "one below the other, unless TERM=xterm-256color suits it"}};
    for (const auto& [kind, told] : kinds) {
        const Tmux terminal(command(), variables(kind), 130, 24);
        EXPECT_TRUE(terminal.shows(told)) << terminal.screen();
        expectShown(terminal, "'volume 12\r", "volume set:  12");
        terminal.type("\x04");
        expectEnd(terminal, "12");
    }
}

TEST_F(FullScreenTest, FollowsEverySizeAndWhatOthersDoToTheScreen) {
    const Tmux terminal(command(), variables(), 80, 24);
    EXPECT_TRUE(terminal.shows("load:"));
    expectShown(terminal, "half a li", ": half a li");
    for (const auto& size : {std::pair(20, 5), {200, 60}, {40, 10}, {133, 7}}) {
        for (int storm = 1; storm < 12; ++storm)
            terminal.resize(1 + storm * 17 % 90, 1 + storm * 7 % 40);
        terminal.resize(size.first, size.second);
        const auto width = static_cast<std::size_t>(size.first);
        EXPECT_TRUE(comes([&] {
            const std::string screen = terminal.screen();
            const auto last = screen.rfind('\n', screen.size() - 2) + 1;
            return std::ranges::count(screen, '\n') == size.second &&
                   screen.find(": half a li", last) != std::string::npos &&
                   screen.size() - last <= width + 1;
        })) << terminal.screen();
    }
    std::ofstream(terminal.tell("pane_tty")) << "\x1b[3;1HGARBAGE" << std::flush;
    EXPECT_TRUE(terminal.shows("GARBAGE"));
    terminal.type("\x0c");
    EXPECT_TRUE(terminal.loses("GARBAGE"));
    expectVolume(terminal, "13");
}

// A shell tells a job that runs already nothing when it comes to the front.
TEST_F(FullScreenTest, GivesTheTerminalToItsShellMeanwhile) {
    const Tmux terminal("PS1=ready: exec sh -i", variables(), 80, 24);
    terminal.type(LARKSPIN_TTY " 2>" + disk.path().native() + "/errors\r");
    EXPECT_TRUE(terminal.shows("load:"));
    expectShown(terminal, "half a li", ": half a li");
    for (const std::string_view back : {"fg\r", "bg\r"}) {
        expectShown(terminal, "\x1a", "Stopped");
        expectShown(terminal, "echo $((40+2))\r", "\n42\n");
        terminal.type(back);
        if (back == "bg\r")
            expectShown(terminal, "echo $((40+3)); fg\r", "");
        EXPECT_TRUE(terminal.shows(": half a li")) << terminal.screen();
        EXPECT_TRUE(terminal.loses("42"));
    }
    expectVolume(terminal, "14");
    expectShown(terminal, "\x04", "ready:");
    expectSaved("14");
}

TEST_F(FullScreenTest, SavesWhenItIsToldToEndOrItsTerminalGoes) {
    int volume = 20;
    for (const int signal : {0, SIGTERM, SIGHUP}) {
        SCOPED_TRACE(signal);
        auto terminal = std::make_unique<Tmux>(command(), variables(), 80, 24);
        EXPECT_TRUE(terminal->shows("load:"));
        expectVolume(*terminal, std::to_string(++volume));
        if (signal != 0) {
            ::kill(terminal->programId(), signal);
            expectEnd(*terminal, std::to_string(volume));
        }
        terminal.reset();
        expectSaved(std::to_string(volume));
    }
}

TEST_F(FullScreenTest, GivesTheTerminalBackInACrash) {
    const Tmux terminal(command(), variables(), 80, 24);
    EXPECT_TRUE(terminal.shows("load:"));
    ::kill(terminal.programId(), SIGABRT);
    EXPECT_TRUE(terminal.shows("isig icanon")) << terminal.screen();
    EXPECT_TRUE(terminal.shows("before"));
    EXPECT_EQ(terminal.tell("mouse_all_flag"), "0");
}

TEST_F(FullScreenTest, TakesTheMouseUnlessItIsTold) {
    const Tmux terminal(command(), variables(), 80, 24);
    EXPECT_TRUE(terminal.shows("load:"));
    EXPECT_EQ(terminal.tell("mouse_all_flag"), "1");
    terminal.type("/mouse\r");
    EXPECT_TRUE(comes([&] { return terminal.tell("mouse_all_flag") == "0"; }));
    terminal.type("/mouse\r");
    EXPECT_TRUE(comes([&] { return terminal.tell("mouse_all_flag") == "1"; }));
}

TEST_F(FullScreenTest, TakesAPasteOfAMegabyte) {
    const Tmux terminal(command(), variables(), 80, 24);
    EXPECT_TRUE(terminal.shows("load:"));
    std::string pasted;
    for (int line = 0; pasted.size() < 1'000'000; ++line)
        pasted += "'volume " + std::to_string(line % 100) + "\n";
    terminal.paste(pasted);
    EXPECT_TRUE(terminal.shows("say the first")) << terminal.screen();
    expectVolume(terminal, "17");
    terminal.paste("a \x1b[31m\x1b]2;b\a");
    EXPECT_TRUE(terminal.shows("a \uFFFD[31m\uFFFD]2;b")) << terminal.screen();
}

TEST_F(FullScreenTest, NoKeyDoesHarm) {
    const Tmux terminal(command(), variables(), 80, 24);
    EXPECT_TRUE(terminal.shows("load:"));
    std::minstd_rand random(1);
    std::string keys;
    for (int stroke = 0; stroke < 4000; ++stroke) {
        constexpr std::string_view begins[] = {"",         "\x1b", "\x1b[", "\x1b[<0;9;9",
                                               "\x1b[1;5", "\x1bO"};
        keys += begins[random() % std::size(begins)];
        const char byte = static_cast<char>(random() % 256);
        constexpr std::string_view ends = "\x04\x1a\r\n"; // it, stops it, or says anything
        keys += ends.find(byte) == ends.npos ? byte : 'M';
    }
    terminal.type(keys);
    terminal.type("\x1b\x1b\x1b");
    EXPECT_TRUE(comes([&] {
        terminal.type("\x1b\x15'volume 18\r");
        return terminal.screen().find("vol 18") != std::string::npos;
    })) << terminal.screen();
    terminal.type("\x04");
    expectEnd(terminal, "18");
}

} // namespace
} // namespace larkspin
