// Menus on the terminal's screen: those that pop up, the bar, and the tray's.
#include "platform/terminal/windows/window_desk.h"
#include "support/virtual_loop.h"

namespace larkspin {

namespace {

class MenuOnScreen : public testing::Test, protected Desk {
protected:
    MenuOnScreen() : Desk(loop_) {}

    // Each way to choose, from the menu that pops up anew, and what has been chosen then.
    std::string chosenBy(const std::vector<Struck>& keys) {
        chosen.clear();
        desktop.popUpAt(menu, {3, 10});
        for (const Struck each : keys)
            key(each);
        loop_.serveTurn();
        return chosen;
    }
    MenuEntry entry(const std::string& caption) {
        return {
            .name = caption, .caption = caption, .action = [this, caption] { chosen += caption; }};
    }

    VirtualLoop loop_;
    std::string chosen;
    MenuEntry checked = [this] {
        MenuEntry made = entry("two");
        made.checked = true;
        return made;
    }();
    Menu menu{.name = "menu", .entries = [this] {
                  return std::vector<MenuEntry>{entry("one"),
                                                separator("s"),
                                                checked,
                                                {.name = "more",
                                                 .caption = "more",
                                                 .children = {entry("deep"), entry("deeper")},
                                                 .isSubmenu = true}};
              }};
};

} // namespace

TEST_F(MenuOnScreen, IsDrawnWithItsMarksAndSubmenus) {
    desktop.popUpAt(menu, {3, 10});
    key(Struck::end);
    key(Struck::right);
    const std::vector<std::string> wanted{"          ┌────────┐",
                                          "          │  one   │",
                                          "          │────────│",
                                          "          │√ two   │┌──────────┐",
                                          "          │  more ►││  deep    │",
                                          "          └────────┘│  deeper  │",
                                          "                    └──────────┘"};
    const auto all = seen();
    EXPECT_EQ(std::vector(all.begin() + 3, all.begin() + 10), wanted);
    EXPECT_TRUE(styleAt({7, 23}).reversed);
}

TEST_F(MenuOnScreen, IsChosenFromByKeys) {
    const std::pair<std::vector<Struck>, std::string> cases[] = {
        {{Struck::down, Struck::enter}, "one"},
        {{Struck::down, Struck::down, Struck::enter}, "two"},
        {{Struck::up, Struck::right, Struck::down, Struck::enter}, "deeper"},
        {{Struck::up, Struck::right, Struck::left, Struck::up, Struck::enter}, "two"},
        {{Struck::enter, Struck::enter}, "one"},
        {{Struck::right, Struck::down, Struck::enter}, "two"},
        {{Struck::down, Struck::escape}, ""},
        {{Struck::enter}, ""}};
    for (const auto& [keys, wanted] : cases) {
        EXPECT_EQ(chosenBy(keys), wanted);
        stage.menu.close();
    }
    desktop.popUpAt(menu, {3, 10});
    type("t ");
    EXPECT_EQ(chosen, "") << "it comes as an event of its own";
    loop_.serveTurn();
    EXPECT_EQ(chosen, "two");
    EXPECT_EQ(line.typed, "");
}

TEST_F(MenuOnScreen, WhatIsMeantForTheLineOrTheScreenComesThere) {
    const struct {
        Stroke stroke;
        bool comesThere, closes;
    } cases[] = {{KeyStroke{.character = U'/'}, true, true},
                 {KeyStroke{.character = U'\''}, true, true},
                 {PasteStroke{"a line"}, true, true},
                 {KeyStroke{.character = U'z', .ctrl = true}, true, false},
                 {KeyStroke{.character = U'c', .ctrl = true}, false, true},
                 {KeyStroke{.character = U'x'}, false, false}};
    for (const auto& [stroke, comesThere, closes] : cases) {
        desktop.popUpAt(menu, {3, 10});
        line.taken.clear();
        take(stroke);
        EXPECT_EQ(!line.taken.empty(), comesThere);
        EXPECT_EQ(!stage.menu.isOpen(), closes);
    }
}

TEST_F(MenuOnScreen, IsChosenFromByTheMouse) {
    desktop.popUpAt(menu, {3, 10});
    mouse(Mouse::release, find("one")); // of the press that has opened it
    EXPECT_TRUE(stage.menu.isOpen());
    mouse(Mouse::press, find("more"));
    mouse(Mouse::release, find("more"));
    click(find("deeper"));
    loop_.serveTurn();
    EXPECT_EQ(chosen, "deeper");
    desktop.popUpAt(menu, {3, 10});
    draw();
    click({20, 70});
    EXPECT_FALSE(stage.menu.isOpen());
    EXPECT_LT(line.taken.size(), 2u) << "a press elsewhere only closes it";
}

TEST_F(MenuOnScreen, StaysOnTheScreenAndScrolls) {
    const Menu many{.name = "many", .entries = [this] {
                        std::vector<MenuEntry> entries;
                        for (int each = 100; each < 200; ++each)
                            entries.push_back(entry("entry " + std::to_string(each)));
                        return entries;
                    }};
    for (const auto& [high, wide] : {std::pair{24, 80}, {5, 20}}) {
        rows = high;
        columns = wide;
        desktop.popUpAt(many, {high - 2, wide - 3});
        find("entry 100");
        key(Struck::end);
        find("entry 199");
        stage.menu.close();
    }
}

TEST_F(MenuOnScreen, TheBarLeadsFromMenuToMenu) {
    desktop.openMenus(
        {menu,
         {.name = "other", .entries = [this] { return std::vector<MenuEntry>{entry("last")}; }}},
        0);
    EXPECT_EQ(seen()[0], " menu  other");
    key(Struck::right);
    key(Struck::down);
    EXPECT_EQ(find("last").column, 9);
    key(Struck::right);
    EXPECT_EQ(find("one").column, 3);
    mouse(Mouse::move, {0, 8}, Button::none);
    key(Struck::down);
    key(Struck::enter);
    loop_.serveTurn();
    EXPECT_EQ(chosen, "last");
    EXPECT_EQ(seen()[0], "");
}

TEST_F(MenuOnScreen, AKeyOpensTheTraysMenuAndAnotherDoubleClicksIt) {
    function(9);
    EXPECT_FALSE(stage.menu.isOpen()) << "there is no icon";
    desktop.addTrayIcon({menu, [this] { chosen += "doubled"; }});
    function(9);
    EXPECT_EQ(find("more").row, rows - 2);
    function(9);
    EXPECT_FALSE(stage.menu.isOpen());
    function(9, true);
    EXPECT_EQ(chosen, "doubled");
    function(9);
    desktop.removeTrayIcon();
    EXPECT_FALSE(stage.menu.isOpen());
}

} // namespace larkspin
