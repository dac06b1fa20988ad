// The program's windows on a real terminal that can be read back: keys and the mouse as bytes.
#include "app/program.h"
#include "platform/terminal/screen/columns.h"
#include "support/made_songs.h"
#include "support/tmux.h"
#include "support/virtual_machine.h"
#include "text/parts.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <ostream>
#include <set>

namespace larkspin {
namespace {

// What the mouse sends: buttons that go down (M) and up (m), or its way.
using Hand = std::string_view;
constexpr Hand click = "0M0m", twice = "0M0m0M0m", rightClick = "2M2m", hover = "35M",
               wheelUp = "64M", drag = "drag", keys = "";
constexpr std::string_view escape = "\x1b", f6 = "\x1b[17~", f9 = "\x1b[20~";

// What the owner does to an event of a control, and what he sees then.
struct Stroke {
    std::string control, event;
    Hand hand;
    std::string_view at;   // what stands there, after what stands before each |; or what is typed
    std::string_view then; // stands on the screen, each of it; with ! it is gone
    int rows = 0, columns = 0; // a drag's way, on which a title takes its window along
};

struct Walk {
    std::string window, opens; // by a line; the splash is there in the first run
    std::vector<Stroke> strokes;
};

const std::vector<Walk> walks{
    {"mp3s",
     "'media",
     {{"prevButton", "hover", hover, "[«]", "previous song"},
      {"playButton", "hover", hover, "[►]", "stop/play"},
      {"pauseButton", "hover", hover, "[II]", "pause/resume"},
      {"nextButton", "hover", hover, "[»]", "next song"},
      {"openButton", "hover", hover, "[open]", "open a media file"},
      {"playlistView", "hover", hover, "bravo ride", "[double click or press delete]"},
      {"mediaCaption", "hover", hover, "[double click or", "[double click to resize]"},
      {"mediaCaption", "press", drag, "[double click to resize]", "", 3, -4},
      {"nextButton", "click", click, "[»]", "►alpha ride|[■]"},
      {"pauseButton", "click", click, "[II]", "« ║ »"},
      {"", "", click, "[►]", "« ► »"},
      {"playButton", "click", click, "[■]", "!►alpha ride|« ■ »"},
      {"prevButton", "click", click, "[«]", "►charlie ride"},
      {"openButton", "click", click, "[open]", "Open a media file"},
      {"", "", keys, "~/music/delta ride.wav\r", "playing:  delta ride|!►charlie ride"},
      {"HScroll2", "change", wheelUp, "volume:|█", "volume:  55|vol 55"},
      {"HScroll3", "change", drag, "tempo:|█", "!tempo:  100", 0, 4},
      {"Command1", "click", click, "[file]", "add directory"},
      {"", "", keys, escape, "!add directory"},
      {"Command2", "click", click, "[edit]", "remove string"},
      {"", "", keys, escape, "!remove string"},
      {"Command3", "click", click, "[ops]", "save playlist"},
      {"", "", keys, escape, "!save playlist"},
      {"Command5", "click", click, "[ref]", "4 files"},
      {"Command6", "click", click, "[rec]", "[stop]"},
      {"playlistView", "double click", twice, "charlie ride", "►charlie ride|3/4 files"},
      {"playlistView", "click", click, "bravo ride", "2/4 files"},
      {"", "", drag, "alpha ride", "3/4 files", 2, 0},
      {"playlistView", "menu", rightClick, "bravo ride", "remove 3 rows"},
      {"playlistView", "key", keys, "\x1b\x1b", "!remove 3 rows"}, // one closes the menu
      {"", "", rightClick, "bravo ride", "remove  "},
      {"", "", keys, escape, "!remove  "},
      {"playlistView", "key", keys, "\x1b[3~", "do you really wanna delete bravo ride?"},
      {"", "", keys, "\r", "!bravo ride|3 files"},
      {"", "", click, "delta ride", "3/3 files"},
      {"renameLabel", "click", click, "[rename]", "file renamer"},
      {"", "", keys, "\x15zulu ride\r", "zulu ride|!file renamer"},
      {"mediaCaption", "double click", twice, "[double click", "![rename]"},
      {"closeButton", "click", click, " × ", "! × "}}},
    {"larkmain",
     "'coms",
     {{"commandsTitle", "press", drag, "larkspin commands window", "", 2, -3},
      {"commandNames", "click", click, "'adv", "advertises this great program"},
      {"closeLabel", "click", click, " × ", "! × "},
      {"", "", keys, "'play ride\r", "or 'view"},
      {"", "", keys, "'view\r", "bravo ride"},
      {"choiceList", "double click", twice, "bravo ride", "playing choice:  2.|! × "}}},
    {"stops",
     "'play ride",
     {{"", "", keys, "'view\r", "[scroll]"},
      {"label", "click", click, "[scroll]", "[stop]"},
      {"", "", click, "[stop]", "[scroll]|selection scroll aborted"}}},
    {"notez",
     "'nshow",
     {{"Label1", "press", drag, "larkspin player notes", "", 2, -3},
      {"Label2", "click", click, "[add a note]", "what would you like to add"},
      {"", "", click, "m:     milk", "f6 to answer"},
      {"", "", keys, "\x1b[17~\x1b[17~br\xC3\xB6tchen\r",
       "br\xC3\xB6tchen|!what would you like to add"},
      {"List2", "click", click, "milk", "│ milk"}, // below the list
      {"Label6", "click", keys, "\t\t\t\t\t\r", "edit in note number 1"},
      {"", "", keys, "\x15tea\r", "m:     tea"},
      {"List2", "double click", twice, "bread", "2.  bread"},
      {"List2", "key", keys, "\x1b[3~", "do you really wanna delete"},
      {"", "", keys, "\r", "!m:     bread"},
      {"Label3", "click", click, "[scroll notes]", "scrolling 2 notes|2.  br\xC3\xB6tchen"},
      {"Label4", "click", click, "[clear notes]", "!m:     tea"},
      {"Label5", "click", click, " × ", "! × "}}},
    {"appz",
     "'apps",
     {{"Label1", "press", drag, "applications n shit ─", "", 2, -3},
      {"Label1", "hover", hover, "applications n shit ─", "dbl click an item to load"},
      {"List1", "hover", hover, "a tool", "!dbl click an item to load"},
      {"List1", "click", click, "a tool", "c:\\gone"},
      {"", "", hover, "applications n shit ─", "dbl click an item to load"},
      {"Text1", "hover", hover, "c:\\gone", "!dbl click an item to load"},
      {"List1", "double click", twice, "a tool", "unable to open... c:\\gone"},
      {"List1", "key", keys, "\x1b[3~", "do you really wanna delete a"},
      {"", "", keys, "\r", "!│ a tool"},
      {"Label3", "click", click, "[add]", "Open applications n shit"},
      {"", "", keys, escape, "!Open applications n shit"},
      {"Label2", "click", click, " × ", "! × "}}},
    {"colors",
     "'color",
     {{"Label2", "press", drag, "color options ─", "", 2, -3},
      {"Command1", "click", click, "[OK]", "you should probably set a color"},
      {"", "", keys, "\r", "!you should probably set a color"},
      {"Combo1", "choose", click, "▼", "√ play controls"},
      {"", "", click, "font color", "!ascii color|font color"},
      {"HScroll1", "change", wheelUp, "█", "<font color=#050000>"},
      {"HScroll2", "change", drag, "█|█", "<font color=#05FF00>", 0, 40},
      {"HScroll3", "change", keys, "\t\x1b[C", "<font color=#05FF01>"},
      {"Text1", "edit", keys, "\tzz", "<font color=#05FF01>zz"},
      {"Label3", "click", click, " × ", "! × "}}},
    {"dire",
     "",
     {{"", "", drag, "┌ larkspin", "", 5, 0}, // the greeting, which stands upon it
      {"title", "press", drag, "  version", "", -3, 2},
      {"", "", keys, "\r\r", "!  version|load:"}}}, // one leads into the box
};

std::vector<std::string> eventsOf(const Control& control) {
    const std::pair<bool, const char*> all[] = {
        {bool(control.onClick), "click"},
        {bool(control.onDoubleClick), "double click"},
        {bool(control.onMouseDown), "press"},
        {bool(control.onMouseMove), "hover"},
        {bool(control.onKey), "key"},
        {bool(control.onChange), "change"},
        {bool(control.onEdit), "edit"},
        {bool(control.onMenu), "menu"},
        {control.kind == Control::Kind::combo, "choose"},
    };
    std::vector<std::string> events;
    for (const auto& [isThere, name] : all)
        if (isThere)
            events.emplace_back(name);
    return events;
}

// Where that stands, as a terminal counts.
std::optional<std::pair<int, int>> rowAndColumnOf(std::string_view text, std::string_view screen) {
    std::size_t at = 0, end = 0;
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view part = takePart(rest, '|');
        at = screen.find(part, end);
        if (at == screen.npos)
            return std::nullopt;
        end = at + part.size();
    }
    const std::string_view before = screen.substr(0, at);
    const int column = columnsOf(before.substr(before.rfind('\n') + 1));
    return std::pair(static_cast<int>(std::ranges::count(before, '\n')) + 1,
                     column + columnsOf(screen.substr(at, end - at)) / 2 + 1);
}

bool hasCome(std::string_view then, const std::string& screen) {
    while (!then.empty()) {
        std::string_view text = takePart(then, '|');
        const bool isGone = text.starts_with('!');
        text.remove_prefix(isGone ? 1 : 0);
        if ((screen.find(text) == screen.npos) != isGone)
            return false;
    }
    return true;
}

struct Home {
    explicit Home(bool isFirstRun) {
        if (!isFirstRun)
            disk.write("larkspin/larkspin.ini",
                       "[lark]\r\nload=2\r\ntrigger='\r\nmedia filter=wav\r\n");
        disk.write("larkspin/larkmain.lpb", "11/25/26-09:30 pm:     milk\r\n"
                                            "11/25/26-09:31 pm:     bread\r\n");
        disk.write("larkspin/lksapp.lst", "c:\\gone\r\nc:\\also gone\r\n");
        disk.write("larkspin/lksappl.lst", "a tool\r\nanother\r\n");
        std::filesystem::create_directory(disk.path() / "music");
        EXPECT_TRUE(makeSong(disk.path() / "music/delta ride.wav", 60));
        std::string list;
        for (const char* name : {"alpha", "bravo", "charlie"}) {
            const auto song = disk.path() / "music" / (std::string(name) + " ride.wav");
            std::filesystem::create_hard_link(disk.path() / "music/delta ride.wav", song);
            list += song.native() + "\r\n";
        }
        disk.write("larkspin/temp.lst", list);
    }
    std::vector<std::string> variables() const {
        auto all = ownHome(disk.path().native());
        all.push_back("TERM=tmux-256color");
        return all;
    }
    TempDirectory disk;
};

class WindowsOnTerminal : public testing::Test {
protected:
    WindowsOnTerminal(bool isFirstRun, int columns, int rows)
        : home(isFirstRun), terminal(LARKSPIN_TTY, home.variables(), columns, rows) {
        expect(isFirstRun ? "your first time" : "load:");
    }
    void expect(std::string_view then) const {
        EXPECT_TRUE(comes([&] { return hasCome(then, terminal.screen()); })) << then << '\n'
                                                                             << terminal.screen();
    }
    void types(std::string_view bytes, std::string_view then) const {
        terminal.type(bytes);
        expect(then);
    }

    const Home home;
    const Tmux terminal;
};

struct OnScreen {
    int columns, rows;
    const Walk* walk;
    friend void PrintTo(const OnScreen& it, std::ostream* out) {
        *out << it.walk->window << " at " << it.columns << "x" << it.rows;
    }
};

class EveryControlOnTerminal : public WindowsOnTerminal,
                               public testing::WithParamInterface<OnScreen> {
protected:
    EveryControlOnTerminal()
        : WindowsOnTerminal(GetParam().walk->opens.empty(), GetParam().columns, GetParam().rows) {}

    void work(const Stroke& stroke) const {
        if (stroke.hand == keys)
            terminal.type(stroke.at);
        else
            useMouse(stroke);
        expect(stroke.then);
    }

private:
    static std::string mouse(std::string_view what, const std::pair<int, int>& at) {
        return "\x1b[<" + std::string(what.substr(0, what.size() - 1)) + ';' +
               std::to_string(at.second) + ';' + std::to_string(at.first) + what.back();
    }
    void useMouse(const Stroke& stroke) const {
        std::optional<std::pair<int, int>> at;
        ASSERT_TRUE(comes([&] {
            at = rowAndColumnOf(stroke.at, terminal.screen());
            return at.has_value();
        })) << terminal.screen();
        if (stroke.hand == drag)
            return dragFrom(*at, stroke);
        std::string bytes;
        for (Hand rest = stroke.hand; !rest.empty();) {
            const std::size_t length = rest.find_first_of("Mm") + 1;
            bytes += mouse(rest.substr(0, length), *at);
            rest.remove_prefix(length);
        }
        terminal.type(bytes);
    }
    void dragFrom(const std::pair<int, int>& from, const Stroke& stroke) const {
        const std::pair to(from.first + stroke.rows, from.second + stroke.columns);
        terminal.type(mouse("0M", from));
        EXPECT_TRUE(comes([&] {
            terminal.type(mouse("32M", to));
            return !stroke.then.empty() || rowAndColumnOf(stroke.at, terminal.screen()) == to;
        })) << terminal.screen();
        terminal.type(mouse("0m", to));
    }
};

std::vector<OnScreen> allOnScreens() {
    std::vector<OnScreen> all;
    for (const Walk& walk : walks)
        for (const auto& [columns, rows] : {std::pair(80, 24), {200, 60}})
            all.push_back({columns, rows, &walk});
    return all;
}

} // namespace

TEST_P(EveryControlOnTerminal, DoesWhatItIsFor) {
    const Walk& walk = *GetParam().walk;
    if (!walk.opens.empty())
        types(walk.opens + '\r', walk.opens);
    for (const Stroke& stroke : walk.strokes) {
        SCOPED_TRACE(stroke.control + " by " + std::string(stroke.at));
        work(stroke);
        if (HasFailure())
            break;
    }
}

INSTANTIATE_TEST_SUITE_P(At, EveryControlOnTerminal, testing::ValuesIn(allOnScreens()));

TEST(EveryControlOnTerminals, IsWorkedInEachWayThatItKnows) {
    std::set<std::vector<std::string>> worked, known;
    for (const Walk& walk : walks)
        for (const Stroke& stroke : walk.strokes)
            if (!stroke.control.empty())
                worked.insert({walk.window, stroke.control, stroke.event});
    VirtualMachine machine(Lines{});
    for (const Window* window : machine.program->windows())
        for (const Control& control : window->controls)
            for (const std::string& event : eventsOf(control))
                known.insert({window->name, control.name, event});
    EXPECT_EQ(worked, known);
}

struct KeysOnTerminal : WindowsOnTerminal {
    KeysOnTerminal() : WindowsOnTerminal(false, 120, 35) {}
};

TEST_F(KeysOnTerminal, LeadThroughWindowsMenusAndDialogs) {
    types("'apps\r", "[add]");
    terminal.type(f6);
    types("\t\t\r", "Open applications n shit"); // from the list past its path to the button
    types("~/music\r", "\\music ");
    types(escape, "!Open applications n shit");
    types(escape, "![add]");
    types("still in the line\r", "still in the line");
    types(f9, "restart program");
    types(escape, "!restart program");
    types("/tray\r", "[rename]");
    types("/show mp3s\r", "mp3s.renameLabel");
    types("/click mp3s.Command2\r", "remove string");
    types(escape, "!remove string");
}

} // namespace larkspin
