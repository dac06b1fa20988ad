// What the owner's hand does to the windows on the terminal's screen.
#include "platform/terminal/windows/window_desk.h"
#include "shell/app_state.h"

namespace larkspin {

namespace {

class WindowOnScreen : public WindowDesk {
protected:
    AppState& state = machine.state();
    std::string row(int at) { return seen()[static_cast<std::size_t>(at)]; }
    Cursor cornerOf(const std::string& name) {
        draw();
        const Area area = stage.find(window(name))->area();
        return {area.top, area.left};
    }
    std::string focusIn(const std::string& name) { return stage.find(window(name))->focused(); }
};

} // namespace

TEST_F(WindowOnScreen, FollowsTheState) {
    show("mp3s");
    EXPECT_EQ(find("song three").row, find("song one").row + 1);
    layers.draw(drawn);
    stage.refresh();
    EXPECT_FALSE(layers.isChanged());
    machine.owner("'volume 70");
    stage.refresh();
    EXPECT_TRUE(layers.isChanged());
    EXPECT_NE(text().find("volume:  70"), std::string::npos);
    machine.owner("'play one");
    EXPECT_EQ(find("►song one").row, find("song two").row - 2);
    window("mp3s").place.height = 315;
    EXPECT_EQ(text().find("song two"), std::string::npos);
    window("mp3s").visible = false;
    EXPECT_EQ(text().find("┌"), std::string::npos);
}

TEST_F(WindowOnScreen, StandsInTheOrderInWhichTheyCameUp) {
    show("notez");
    window("notez").beside = window("appz").beside = false;
    window("notez").place.left = window("appz").place.left = 1200;
    window("notez").place.top = window("appz").place.top = 1200;
    draw();
    show("appz");
    EXPECT_NE(text().find("applications n shit"), std::string::npos);
    EXPECT_EQ(text().find("player notes"), std::string::npos);
    show("notez");
    EXPECT_NE(text().find("player notes"), std::string::npos);
    EXPECT_EQ(find("player notes").row, 5);
    EXPECT_EQ(find("larkspin player notes").column, 12);
}

TEST_F(WindowOnScreen, WindowsThatComeUpBesideCoverNoOtherWhereThereIsRoom) {
    rows = 60;
    columns = 200;
    std::vector<Area> areas;
    for (const char* name : {"mp3s", "notez", "appz", "colors"}) {
        show(name);
        draw();
        areas.push_back(stage.find(window(name))->area());
    }
    for (std::size_t a = 0; a < areas.size(); ++a)
        for (std::size_t b = 0; b < a; ++b)
            EXPECT_TRUE(areas[a].within(areas[b]).isEmpty()) << a << ' ' << b;
}

TEST_F(WindowOnScreen, TheStopWindowStandsOnTheChoicesAndMovesWithThem) {
    machine.owner("'play song");
    machine.owner("'view");
    const Cursor stops = cornerOf("stops"), choices = cornerOf("larkmain");
    EXPECT_NE(stops.row, choices.row);
    function(6);
    function(6);
    key(Struck::left, false, true);
    EXPECT_EQ(cornerOf("larkmain").column, choices.column - 2);
    EXPECT_EQ(cornerOf("stops").column, stops.column - 2);
}

TEST_F(WindowOnScreen, ComesBackToItsPlaceWhenTheScreenHasRoomAgain) {
    show("notez");
    const Cursor before = cornerOf("notez");
    for (const auto& [high, wide] : {std::pair{5, 20}, {24, 80}}) {
        rows = high;
        columns = wide;
        draw();
    }
    EXPECT_EQ(cornerOf("notez"), before);
}

TEST_F(WindowOnScreen, IsMovedByItsTitleAndByKeys) {
    show("notez");
    const Cursor title = find("player notes"), corner = cornerOf("notez");
    const auto drag = [&](const Cursor& from, const Cursor& to) {
        machine.run([&] { mouse(Mouse::press, from); });
        mouse(Mouse::move, to);
        mouse(Mouse::release, to);
    };
    drag(title, {title.row + 3, title.column - 20});
    EXPECT_EQ(cornerOf("notez").row, corner.row + 3);
    EXPECT_EQ(cornerOf("notez").column, corner.column - 20);
    EXPECT_FALSE(window("notez").beside);
    EXPECT_FALSE(window("notez").dragged);
    key(Struck::up, false, true);
    key(Struck::right, false, true);
    EXPECT_EQ(cornerOf("notez").row, corner.row + 2);
    EXPECT_EQ(cornerOf("notez").column, corner.column - 18);
    drag(find("player notes"), {100, -100}); // it can't be lost
    EXPECT_EQ(cornerOf("notez").column, 0);
    EXPECT_NE(text().find("add a note"), std::string::npos);
    EXPECT_NE(text().find("└"), std::string::npos);
}

TEST_F(WindowOnScreen, TheKeyboardGoesInByF6AndByAPressAndOutByEscapeAndAPressElsewhere) {
    show("notez");
    type("a");
    EXPECT_EQ(line.typed, "a");
    EXPECT_EQ(cursor.has_value(), false);
    function(6);
    EXPECT_EQ(focusIn("notez"), "List2");
    draw();
    EXPECT_EQ(cursor->row, areaOf("notez", "List2").top);
    function(6);
    EXPECT_FALSE(stage.keyboard() != nullptr);
    key(Struck::enter);
    EXPECT_FALSE(stage.keyboard() != nullptr);
    stage.isLineBegun = [] { return true; };
    key(Struck::tab); // completes what stands in the line
    EXPECT_FALSE(stage.keyboard() != nullptr);
    stage.isLineBegun = [] { return false; };
    key(Struck::tab);
    EXPECT_EQ(focusIn("notez"), "List2");
    click(middleOf("notez", "List2"));
    EXPECT_TRUE(stage.keyboard() != nullptr);
    click({23, 0});
    EXPECT_FALSE(stage.keyboard() != nullptr);
    function(6);
    key(Struck::escape);
    EXPECT_FALSE(stage.keyboard() != nullptr);
    EXPECT_FALSE(window("notez").visible);
    show("mp3s");
    draw();
    function(6);
    key(Struck::tab); // to the tools, from which Escape closes
    click(middleOf("mp3s", "playlistView"));
    key(Struck::escape);
    EXPECT_TRUE(window("mp3s").visible) << "there it means the rows";
    EXPECT_FALSE(stage.keyboard() != nullptr);
    function(6);
    while (focusIn("mp3s") != "playlistView")
        key(Struck::tab);
    key(Struck::down);
    key(Struck::down, true);
    key(Struck::escape);
    EXPECT_EQ(state.playlistView.selectedCount(), 1);
    EXPECT_TRUE(stage.keyboard() != nullptr);
    key(Struck::escape);
    EXPECT_FALSE(stage.keyboard() != nullptr);
}

// As on the desktop: nothing that is meant for the line is lost, or presses something.
TEST_F(WindowOnScreen, WhatIsTypedGoesToTheLine) {
    bool isBegun = false;
    stage.isLineBegun = [&] { return isBegun; };
    show("mp3s");
    draw();
    const auto volumeUp = [&] { return state.HScroll2; };
    function(6);
    type("x");
    EXPECT_EQ(line.typed, "x");
    EXPECT_FALSE(stage.keyboard() != nullptr);
    click(middleOf("mp3s", "Command1")); // by the mouse: Space and Return press nothing
    machine.desktop.popup.reset();
    type(" ");
    key(Struck::enter);
    EXPECT_FALSE(machine.desktop.popup);
    isBegun = true;
    type(" ");
    EXPECT_EQ(line.typed, "x ");
    isBegun = false;
    click(middleOf("mp3s", "HScroll2"));
    const int before = volumeUp();
    key(Struck::right);
    EXPECT_EQ(volumeUp(), before + 1);
    key(Struck::tab, true);
    key(Struck::tab, true);
    EXPECT_EQ(focusIn("mp3s"), "nextButton");
    take(PasteStroke{"pasted"});
    EXPECT_TRUE(std::holds_alternative<PasteStroke>(line.taken.back()));
}

TEST_F(WindowOnScreen, ListsAreWorkedByKeys) {
    show("mp3s");
    draw();
    function(6);
    while (focusIn("mp3s") != "playlistView")
        key(Struck::tab);
    key(Struck::down);
    EXPECT_EQ(state.playlistView.currentIndex(), 0);
    key(Struck::down, true);
    EXPECT_EQ(state.playlistView.selectedCount(), 2);
    key(Struck::end);
    EXPECT_EQ(state.playlistView.currentIndex(), 2);
    EXPECT_EQ(state.playlistView.selectedCount(), 1);
    machine.run([&] { key(Struck::enter); });
    EXPECT_EQ(state.play.find("song two") == std::string::npos, false);
    function(10, true);
    EXPECT_TRUE(machine.desktop.popup) << "the row's menu";
    machine.dialogs.answers = {"yes"};
    machine.run([&] { key(Struck::del); });
    EXPECT_FALSE(machine.dialogs.boxes.empty());
}

TEST_F(WindowOnScreen, ListsAreWorkedByTheMouse) {
    show("mp3s");
    const Cursor one = find("song one"), three = find("song three"), two = find("song two");
    click(three);
    EXPECT_EQ(state.playlistView.currentIndex(), 1);
    EXPECT_TRUE(styleAt(three).reversed);
    EXPECT_EQ(state.fileCountLabel.substr(0, 3), "2/3");
    mouse(Mouse::press, one);
    mouse(Mouse::move, two);
    EXPECT_TRUE(styleAt(three).reversed) << "while it is drawn";
    mouse(Mouse::release, two);
    EXPECT_EQ(state.playlistView.selectedCount(), 3);
    take(MouseStroke{.button = Button::left, .row = one.row, .column = one.column, .ctrl = true});
    take(MouseStroke{.kind = Mouse::release,
                     .button = Button::left,
                     .row = one.row,
                     .column = one.column,
                     .ctrl = true});
    EXPECT_EQ(state.playlistView.selectedCount(), 2);
    machine.run([&] { doubleClick(three); });
    EXPECT_NE(state.play.find("song three"), std::string::npos);
    click(one, Button::right);
    EXPECT_TRUE(machine.desktop.popup);
    EXPECT_EQ(state.playlistView.currentIndex(), 0);
    mouse(Mouse::move, one, Button::none);
    EXPECT_NE(text().find("[double click or press delete]"), std::string::npos);
}

TEST_F(WindowOnScreen, LongListsScroll) {
    while (state.notes.count() < 500)
        state.notes.add("note " + std::to_string(1000 + state.notes.count()));
    show("notez");
    const Cursor list = middleOf("notez", "List2");
    EXPECT_NE(text().find("note 1000"), std::string::npos);
    mouse(Mouse::wheelDown, list, Button::none);
    EXPECT_EQ(text().find("note 1002"), std::string::npos);
    EXPECT_NE(text().find("note 1003"), std::string::npos);
    EXPECT_EQ(state.notes.currentIndex(), -1) << "which selects nothing";
    const Area area = areaOf("notez", "List2");
    click({area.bottom() - 1, area.right() - 1}); // the mark beside it
    EXPECT_NE(text().find("note 1499"), std::string::npos);
    state.notes.choose(250); // by the program
    EXPECT_NE(text().find("note 1250"), std::string::npos);
}

TEST_F(WindowOnScreen, SlidersCombosAndFieldsAreWorked) {
    show("colors");
    const Area red = areaOf("colors", "HScroll1");
    mouse(Mouse::press, {red.top, red.right() - 1});
    mouse(Mouse::move, {red.top, red.left + red.columns / 2});
    mouse(Mouse::release, {red.top, red.left + red.columns / 2});
    const Color half = window("colors").control("Label1").background;
    EXPECT_GT(half, 100u);
    EXPECT_LT(half, 156u);
    EXPECT_EQ(styleAt(middleOf("colors", "Label1")).background, half << 16);
    EXPECT_NE(text().find("<font color=#"), std::string::npos);
    mouse(Mouse::wheelUp, middleOf("colors", "HScroll2"), Button::none);
    EXPECT_EQ(window("colors").control("Label1").background, half + 5 * 256);
    click(middleOf("colors", "Text1"));
    key(Struck::end);
    key(Struck::backspace);
    type("é>");
    EXPECT_EQ(window("colors").control("Text1").text().substr(15), "0500é>");
    click(middleOf("colors", "Combo1"));
    EXPECT_TRUE(stage.menu.isOpen());
    const Cursor first = find("√");
    key(Struck::home);
    key(Struck::enter);
    machine.advance(1ms);
    EXPECT_FALSE(stage.menu.isOpen());
    EXPECT_NE(find("▼").row, first.row);
    EXPECT_EQ(window("colors").control("Combo1").rows->currentIndex(), 0);
}

TEST_F(WindowOnScreen, ATitleIsDoubleClickedAndStandsForTheTray) {
    machine.desktop.icon->menu.name = "tray";
    desktop.addTrayIcon(*machine.desktop.icon);
    show("mp3s");
    const Cursor title = find("double click to resize");
    machine.run([&] { doubleClick(title); });
    EXPECT_EQ(window("mp3s").place.height, 315);
    click(title, Button::right);
    EXPECT_TRUE(stage.menu.isOpen());
    EXPECT_NE(text().find("exit"), std::string::npos);
}

} // namespace larkspin
