// The room on a terminal's screen, by its keys and the mouse, and what is seen of it.
#include "platform/terminal/room/screen_desk.h"

#include <random>

namespace larkspin {
namespace {

using Kind = KeyStroke::Kind;
using Button = MouseStroke::Button;
using Mouse = MouseStroke::Kind;

struct ScreenRoomTest : ScreenDesk {
    ScreenRoomTest() : ScreenDesk({"ride", "storm"}) {
        server.names = {{"#den", "@Jo +ann bob"}, {"#music", "Jo ann"}};
        room.rooms.preferences.showStamps(false);
    }
    void connect() {
        type("/connect irc.test Jo den\n/join #music\n");
        alt(U'1');
    }
    std::string topRow() { return rowAt(0).substr(1, rowAt(0).find("  ") - 1); }
    std::string lastSaid() { return rowAt(rows - 3); }
};

TEST_F(ScreenRoomTest, StandsOnScreensOfAllSizes) {
    connect();
    hear("ann", "#music", "hi");
    hear("bob", "#music", "Jo: you there?");
    hear("ann", "#den", "morning, all of you who are up already at this hour");
    type("hello");
    const struct {
        int rows, columns;
        std::string screen;
    } cases[] = {
        {9, 110,
         " #den                                                                               "
         "        F1 help  F10 menu\n"
         " 0 lobby        │                                                                      "
         "        │3 people\n"
         "irc.test        │                                                                      "
         "        │@Jo\n"
         " 1 #den         │                                                                      "
         "        │+ann\n"
         " 2 #music     •2│#music is room 2                                                      "
         "        │ bob\n"
         "                │#music: bob: Jo: you there?                                           "
         "        │\n"
         "                │ann: morning, all of you who are up already at this hour              "
         "        │\n"
         " « ■ » nothing plays                                                               "
         "vol 50 ═════─────  no mode\n"
         "Jo: hello\n"},
        {8, 40,
         " #den                    2:•2  F10 menu\n"
         "\n"
         "#music is room 2\n"
         "#music: bob: Jo: you there?\n"
         "ann: morning, all of you who are up\n"
         "  already at this hour\n"
         " ■ nothing plays\n"
         "Jo: hello\n"},
        {5, 20,
         "  you who are up\n"
         "  already at this\n"
         "  hour\n"
         " ■ nothing plays\n"
         "Jo: hello\n"},
    };
    for (const auto& [r, c, screen] : cases) {
        on(r, c);
        EXPECT_EQ(seen(), screen) << r << 'x' << c;
    }
    for (int r = 0; r < 9; ++r)
        for (int c = 0; c < 30; ++c) {
            on(r, c);
            seen();
        }
}

TEST_F(ScreenRoomTest, KeysLeadFromOneConversationToAnother) {
    connect();
    hear("bob", "Jo", "psst");
    const struct {
        KeyStroke key;
        std::string place;
    } cases[] = {
        {{.character = U'0'}, "lobby"},  {{.character = U'2'}, "#music"},
        {{.character = U'9'}, "#music"}, {{.kind = Kind::down}, "bob"},
        {{.kind = Kind::down}, "lobby"}, {{.kind = Kind::up}, "bob"},
        {{.kind = Kind::up}, "#music"},
    };
    for (const auto& [key, place] : cases) {
        alt(key);
        EXPECT_EQ(topRow(), place);
        EXPECT_EQ(title, "larkspin - " + place);
    }
    hear("ann", "#den", "hi");
    alt(U'a');
    EXPECT_EQ(topRow(), "#den");
    EXPECT_EQ(lastSaid(), "ann: hi");
}

TEST_F(ScreenRoomTest, TheMouseWorksWhatItPointsAt) {
    connect();
    on(20, 110);
    click(4, 5); // in the list of rooms
    EXPECT_EQ(topRow(), "#music");
    click(3, 5);
    mouse(Mouse::press, 3, 100, Button::right); // ann
    EXPECT_EQ(captions().at(0), "private talk");
    mouse(Mouse::press, 3, 100, Button::left, true);
    EXPECT_EQ(topRow(), "ann");
    click(0, 40);
    ASSERT_EQ(menus.size(), 5U);
    EXPECT_EQ(menus[0].name, "room");
    alt(U'1');
    hear("bob", "#den", "look: https://lark.example/a");
    machine.dialogs.answers = {"yes"};
    click(17, 30);
    EXPECT_EQ(machine.launching.started.back(), "open https://lark.example/a");
}

TEST_F(ScreenRoomTest, WhoHasNoMouseHasMenusOfLinksAndPeople) {
    connect();
    hear("bob", "#den", "https://lark.example/a or www.lark.example");
    alt(U'l');
    EXPECT_EQ(captions(), (Lines{"http://www.lark.example", "https://lark.example/a"}));
    alt(U'p');
    EXPECT_EQ(captions(), (Lines{"@Jo", "+ann", "bob"}));
    for (const KeyStroke& key :
         {KeyStroke{.kind = Kind::function, .number = 10}, {.character = U'm', .alt = true}}) {
        menus.clear();
        strike(key);
        EXPECT_EQ(menus.size(), 5U);
    }
    const auto chooseInRoom = [this](const char* name) {
        for (const MenuEntry& each : menus[0].entries())
            for (const MenuEntry& inside :
                 each.children.empty() ? std::vector{each} : each.children)
                if (inside.name == name)
                    machine.run(inside.action);
        settle();
    };
    chooseInRoom("connect");
    EXPECT_EQ(room.layer.view.line.typing.draft().text, "/connect ");
    const bool stamps = room.rooms.preferences.showsStamps();
    chooseInRoom("stamps");
    EXPECT_NE(room.rooms.preferences.showsStamps(), stamps);
    strike(KeyStroke{.kind = Kind::function, .number = 1});
    EXPECT_NE(seen().find("/help WORD tells of a word"), std::string::npos);
}

TEST_F(ScreenRoomTest, TheBarWorksTheSongInPlay) {
    on(12, 120);
    const auto bar = [this](const std::string& text) {
        EXPECT_NE(rowAt(10).find(text), std::string::npos) << text << " in" << rowAt(10);
    };
    bar(" « ■ » nothing plays ");
    click(10, 3);
    machine.advance(2s);
    bar(" « ► » ride   ");
    bar(" 0:01 / 3:00 ");
    click(10, 3);
    bar(" « ║ » ride   ");
    click(10, 5);
    machine.advance(1s);
    bar(" « ► » storm  ");
    click(10, 85); // on the slider of the position
    machine.advance(1s);
    bar(" 2:20 / 3:00 ");
    mouse(Mouse::wheelUp, 10, 20);
    bar("vol 55");
    click(10, 119 - 1);
    EXPECT_EQ(captions(), (Lines{"no mode", "repeat", "shuffle", "continuous"}));
}

TEST_F(ScreenRoomTest, PagesScrollAndWhoSpeaksIsAtTheEndAgain) {
    connect();
    for (int line = 0; line < 40; ++line)
        keep("#den", std::to_string(line));
    settle();
    EXPECT_EQ(lastSaid(), "ann: 39");
    key(Kind::pageUp);
    EXPECT_EQ(rowAt(1), "ann: 23");
    alt(U'2');
    alt(U'1');
    EXPECT_EQ(rowAt(1), "ann: 23"); // where it was left
    hear("ann", "#den", "new");
    EXPECT_EQ(lastSaid().substr(lastSaid().size() - 14), "1 new line ↓");
    mouse(Mouse::wheelUp, 5, 5);
    EXPECT_EQ(rowAt(1), "ann: 20");
    key(Kind::home);
    EXPECT_EQ(rowAt(1), "#music is room 2");
    key(Kind::end);
    EXPECT_EQ(lastSaid(), "ann: new");
    key(Kind::pageUp);
    type("hi\n");
    EXPECT_EQ(lastSaid(), "Jo: hi");
}

TEST_F(ScreenRoomTest, TheBellRingsOnceForWhatCallsHimElsewhere) {
    connect();
    hear("ann", "#den", "Jo: here");
    EXPECT_EQ(rings, 0);
    hear("ann", "#music", "Jo: there");
    hear("ann", "#music", "Jo: there?");
    EXPECT_EQ(rings, 1);
    alt(U'2');
    alt(U'1');
    hear("ann", "#music", "Jo!");
    EXPECT_EQ(rings, 2);
    alt(U'2');
    alt(U'1');
    type("/notifications off\n");
    hear("ann", "#music", "Jo!");
    EXPECT_EQ(rings, 2);
}

TEST_F(ScreenRoomTest, NoWindowHidesWhatTheLineAsks) {
    struct : Layer {
        Rank rank() const override { return Rank::window; }
        std::optional<Cursor> draw(Cells& cells) override {
            cells.fill(cells.area(), {}, U'#');
            return std::nullopt;
        }
        bool take(const Stroke& stroke) override {
            return std::holds_alternative<MouseStroke>(stroke);
        }
    } window;
    layers.add(window);
    strike(PasteStroke{"one\ntwo"});
    EXPECT_NE(rowAt(rows - 5).find("say 2 lines?"), std::string::npos) << seen();
    click(rows - 2, 3);
    layers.remove(window);
    EXPECT_NE(seen().find("Owner: two"), std::string::npos) << seen();
}

TEST_F(ScreenRoomTest, WordsTellTheOwnerAlone) {
    connect();
    const std::size_t sent = server.sent.size();
    type("/show notes\n");
    EXPECT_NE(seen().find("notes"), std::string::npos);
    type("/mouse\n");
    EXPECT_FALSE(takesMouse);
    type("/mouse\n");
    EXPECT_TRUE(takesMouse);
    type("/click mp3s.nosuch\n");
    EXPECT_EQ(lastSaid(), "mp3s has no control nosuch");
    EXPECT_EQ(server.sent.size(), sent);
    type("/quit\n");
    EXPECT_EQ(quits, 1);
    type("x");
    strike(KeyStroke{.character = U'd', .ctrl = true});
    EXPECT_EQ(quits, 1);
    key(Kind::backspace);
    strike(KeyStroke{.character = U'd', .ctrl = true});
    EXPECT_EQ(quits, 2);
}

TEST_F(ScreenRoomTest, AnEveningIsNotEndedByAKeyHeldTooLong) {
    connect();
    const auto control = [this](char32_t key) {
        strike(KeyStroke{.character = key, .ctrl = true});
    };
    type("abc");
    control(U'c');
    EXPECT_EQ(rowAt(11), "Jo:");
    control(U'c');
    control(U'c');
    EXPECT_EQ(lastSaid(), "  tells of all words, /keys of the keys");
    EXPECT_EQ(rowAt(rows - 5), "#music is room 2") << "it is told once";
    type("ab");
    control(U'a');
    for (int times = 0; times < 4; ++times)
        control(U'd');
    EXPECT_EQ(rowAt(11), "Jo:");
    EXPECT_EQ(quits, 0);
    type("/keys\n");
    EXPECT_EQ(lastSaid(), "  Shift does in most for once");
    control(U'd');
    EXPECT_EQ(quits, 1);
}

TEST_F(ScreenRoomTest, APasswordIsNotSeenAndItsPromptStandsInFront) {
    connect();
    type("/login Jo\n");
    EXPECT_EQ(rowAt(11).substr(0, 8), "password");
    type("hunter2");
    EXPECT_EQ(seen().find("hunter2"), std::string::npos);
    type("\n");
    EXPECT_EQ(rowAt(11), "Jo:");
}

TEST_F(ScreenRoomTest, ColorsAreHisChoice) {
    connect();
    EXPECT_EQ(styleAt(11, 0).background, 0x000000U);
    type("/colors dark\n");
    EXPECT_EQ(styleAt(11, 0).background, std::nullopt);
    const auto dim = [this] { return *styleAt(rows - 3, 0).foreground; };
    const Rgb onDark = dim();
    type("/colors light\n");
    EXPECT_LT(dim(), onDark);
}

TEST_F(ScreenRoomTest, TakesWhateverIsStruckAtWhateverSize) {
    connect();
    for (int line = 0; line < 200; ++line)
        keep("#den", std::string(static_cast<std::size_t>(line), 'x') + " https://lark.example");
    std::mt19937 random(7);
    const auto below = [&](int bound) {
        return static_cast<int>(random() % static_cast<unsigned>(bound));
    };
    for (int stroke = 0; stroke < 600; ++stroke) {
        if (below(20) == 0)
            on(below(40), below(140));
        if (below(3) == 0)
            strike(MouseStroke{.kind = static_cast<Mouse>(below(5)),
                               .button = static_cast<Button>(below(4)),
                               .row = below(40),
                               .column = below(140),
                               .isSecond = below(2) == 0});
        else
            strike(KeyStroke{.kind = static_cast<Kind>(below(16)),
                             .character = static_cast<char32_t>(' ' + below(90)),
                             .number = below(12) + 1,
                             .alt = below(4) == 0,
                             .ctrl = below(8) == 0});
    }
    on(12, 60);
    alt(U'1');
    EXPECT_EQ(topRow(), "#den");
}

struct EmptyScreenRoom : ScreenDesk {};

TEST_F(EmptyScreenRoom, TheFirstStepsStandThereWhileThereAreNoSongs) {
    on(24, 80);
    EXPECT_EQ(rowAt(16), "there are no songs yet. these lines bring them, and play one:");
    EXPECT_EQ(rowAt(18), "  'scan ~      looks for songs there");
    click(18, 4);
    EXPECT_NE(seen().find("Owner: 'scan ~"), std::string::npos);
    machine.dialogs.answers = {};
    click(21, 5); // the button
    EXPECT_EQ(machine.dialogs.titles.back(), "where is your music?");
    type("/connect irc.test Owner music\n");
    click(18, 24); // others would read it
    EXPECT_EQ(rowAt(23), "Owner: 'scan ~");
}

} // namespace
} // namespace larkspin
