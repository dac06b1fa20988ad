// The menus of the room's window: what stands there, and what choosing it does.
#include "app/first_steps.h"
#include "app/menu_bar.h"
#include "app/program.h"
#include "irc/client/all_rooms.h"
#include "irc/client/password_prompt.h"
#include "support/no_prompt.h"
#include "support/pretend_irc.h"
#include "support/virtual_machine.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

struct MenuBarTest : testing::Test {
    MenuBarTest() {
        machine.host = &rooms.room;
        machine.playlist({"a ride.mp3", "b ride.mp3"});
        machine.writeDataFile("evening.lkl", "");
        machine.start();
        steps.emplace(*machine.program, rooms.preferences);
        menus = menuBar({.program = *machine.program,
                         .rooms = rooms,
                         .firstSteps = *steps,
                         .run = [this](const std::string& line) { ran.push_back(line); },
                         .connect = [this] { ran.emplace_back("(connect)"); },
                         .preferences = [this] { ran.emplace_back("(preferences)"); },
                         .manual = "c:\\manual.md"});
    }

    static std::string told(const std::vector<MenuEntry>& entries) {
        std::string line;
        for (const MenuEntry& each : entries)
            line += (line.empty() ? "" : " | ") + std::string(each.checked ? "*" : "") +
                    each.caption + (each.isSubmenu ? " (" + told(each.children) + ")" : "");
        return line;
    }
    std::string shown(std::size_t menu) { return told(menus[menu].entries()); }
    static const MenuEntry* find(const std::vector<MenuEntry>& entries, const std::string& name) {
        for (const MenuEntry& each : entries) {
            if (each.name == name)
                return &each;
            if (const MenuEntry* const found = find(each.children, name))
                return found;
        }
        return nullptr;
    }
    void choose(const std::string& name) {
        for (const Menu& menu : menus) {
            const auto entries = menu.entries();
            if (const MenuEntry* const found = find(entries, name)) {
                machine.run(found->action);
                machine.advance(1s);
                return;
            }
        }
        ADD_FAILURE() << "no " << name;
    }

    VirtualMachine machine;
    PretendIrc server{machine.loop}, other{machine.loop};
    NoPrompt prompt;
    AllRooms rooms{machine.loop,
                   machine.lines,
                   lent({&server, &other}),
                   prompt,
                   machine.kept,
                   DataDirectory(machine.drive("data")),
                   "Owner",
                   {}};
    std::optional<FirstSteps> steps;
    std::vector<Menu> menus;
    Lines ran;
};

TEST_F(MenuBarTest, NamesEverythingAsItStands) {
    EXPECT_EQ(
        shown(0),
        "connect... | networks (none is known yet) | a client in Wine | - | preferences... | - | "
        "quit");
    EXPECT_EQ(shown(1).substr(0, 110),
              "add folder... | add files... | - | playlists (1 playlists | - | evening.lkl | - | "
              "new | load... | save...) | f");
    EXPECT_EQ(shown(2), "previous | play | next | stop | - | volume (100 | 90 | 80 | 70 | 60 | *50 "
                        "| 40 | 30 | 20 | 10 | 0) | - | repeat | shuffle | continuous");
    EXPECT_EQ(shown(3), "media | commands | stop | notes | apps | colors | splash");
    EXPECT_EQ(shown(4),
              "first steps | words by topics | all commands | the manual | - | about larkspin");
}

TEST_F(MenuBarTest, DoesWhatWordsAndButtonsDoWithoutAWordToOthers) {
    machine.forget();
    for (const auto& [name, line] :
         std::vector<std::pair<std::string, std::string>>{{"connect", "(connect)"},
                                                          {"preferences", "(preferences)"},
                                                          {"quit", "/quit"},
                                                          {"addfolder", "/addmusic"},
                                                          {"topics", "/help"}}) {
        ran.clear();
        choose(name);
        EXPECT_EQ(ran, Lines{line}) << name;
    }
    choose("playpause"); // the first song, as none was played before
    EXPECT_EQ(machine.player.opened.size(), 1u);
    EXPECT_EQ(shown(2).substr(0, 24), "previous | pause | next ");
    choose("volume80");
    EXPECT_EQ(machine.setting("volume"), "") << "kept at the end";
    EXPECT_NE(shown(2).find("*80"), std::string::npos);
    choose("crand");
    EXPECT_NE(shown(2).find("*shuffle"), std::string::npos);
    choose("stop");
    EXPECT_EQ(shown(2).substr(0, 16), "previous | play ");
    choose("firststeps");
    EXPECT_TRUE(steps->areShown());
    choose("manual");
    EXPECT_EQ(machine.launching.started.back(), "open c:\\manual.md");
    choose("about");
    EXPECT_EQ(machine.lastBox().substr(0, 9), "larkspin ");
    EXPECT_EQ(machine.allSaid(), Lines{});
}

TEST_F(MenuBarTest, ShowsAndHidesEachWindowThatDoesntComeByItself) {
    for (const char* name : {"mp3s", "larkmain", "notez", "appz", "colors"}) {
        Window& window = machine.window(name);
        for (const bool isSeen : {window.visible, !window.visible}) {
            EXPECT_EQ(window.visible, isSeen) << name;
            choose(name);
            EXPECT_EQ(window.visible, !isSeen) << name;
        }
    }
    for (const char* name : {"stops", "dire"}) {
        Window& window = machine.window(name); // which brings it up
        choose(name);
        EXPECT_FALSE(window.visible) << name;
        choose(name);
        EXPECT_FALSE(window.visible) << name;
    }
}

TEST_F(MenuBarTest, LeadsToNetworksAndTheirRooms) {
    SlashWords words([](const std::string&) {});
    words.add(rooms.slashWords());
    machine.run([&] { words.run("/connect irc.test Owner #den"); });
    machine.advance(1s);
    EXPECT_EQ(shown(0).substr(0, 89), "connect... | networks (irc.test (on) (leave it)) | "
                                      "a client in Wine | join a room... | le");
    machine.dialogs.answers = {"#attic key"};
    choose("join");
    choose("off0");
    choose("leave");
    EXPECT_EQ(ran, (Lines{"/join #attic key", "/disconnect irc.test", "/leave"}));
    machine.run([&] { words.run("/disconnect"); });
    machine.advance(5s);
    ran.clear();
    choose("on0");
    choose("forget0");
    EXPECT_EQ(ran, (Lines{"/connect irc.test", "/networks forget irc.test"}));
}

} // namespace
} // namespace larkspin
