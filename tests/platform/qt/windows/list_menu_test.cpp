// The rows of the playlist by a real hand: their menu, what Escape does there, and the mark of the
// song in play.
#include "platform/qt/qt_desktop.h"
#include "platform/qt/windows/real_mouse.h"
#include "shell/control_events.h"
#include "text/row_list.h"

#include <QAccessible>
#include <QApplication>
#include <QCursor>
#include <QListView>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

struct ListMenuTest : testing::Test {
    ListMenuTest() {
        QWidget& window = desk.show("mp3s");
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        window.activateWindow();
        EXPECT_TRUE(comes(desk, [&] { return window.isActiveWindow(); }));
    }

    QListView& list() { return desk.control<QListView>("mp3s", "playlistView"); }
    RowList& rows() { return desk.state().playlistView; }
    void clickOn(int row, const char* button) {
        const QRect place = list().visualRect(list().model()->index(row, 0));
        point(list().viewport()->mapToGlobal(place.center()));
        hand({"click", button});
    }
    // And takes it away again.
    bool menuComes() {
        const bool came = comes(desk, [&] { return desk.desktop.popup.has_value(); });
        return came && std::exchange(desk.desktop.popup, {})->name == "rowz";
    }

    Desk desk{{"a.mp3", "b.mp3", "c.mp3"}};
};

TEST_F(ListMenuTest, ComesByARightClickAndByItsKey) {
    desk.run([&] { selectRows(desk.window("mp3s"), "playlistView", {0, 1}); });
    desk.settle();
    for (const auto& [row, selected] : {std::pair(0, 2), {2, 1}}) {
        clickOn(row, "3");
        EXPECT_TRUE(menuComes());
        EXPECT_EQ(rows().currentIndex(), row);
        EXPECT_EQ(rows().selectedCount(), selected);
        desk.settle();
        EXPECT_EQ(list().selectionModel()->selectedRows().count(), selected);
    }
    clickOn(1, "1");
    EXPECT_TRUE(comes(desk, [&] { return rows().currentIndex() == 1; }));
    hand({"key", "Menu"});
    EXPECT_TRUE(menuComes());
    EXPECT_EQ(rows().currentIndex(), 1);
    EXPECT_EQ(desk.titleMenus, 0);
    desk.run([&] { rows().clear(); });
    desk.settle();
    hand({"key", "Menu"});
    EXPECT_TRUE(comes(desk, [&] { return desk.titleMenus == 1; })) << "there is no row";
}

TEST_F(ListMenuTest, EscapeLeavesThePlayerInSight) {
    clickOn(0, "1"); // not where a click has just been, or it would be a double click
    EXPECT_TRUE(comes(desk, [&] { return rows().currentIndex() == 0; }));
    hand({"key", "shift+Down"});
    EXPECT_TRUE(comes(desk, [&] { return rows().selectedCount() == 2; }));
    hand({"key", "Escape"});
    EXPECT_TRUE(comes(desk, [&] { return rows().selectedCount() == 1; }));
    desk.settle();
    EXPECT_TRUE(desk.window("mp3s").visible);
}

TEST_F(ListMenuTest, ShowsAtThePointerOrOverWhatHasTheKeyboard) {
    std::string chosen;
    const Menu menu{"toy", [&] {
                        return std::vector<MenuEntry>{
                            {.name = "a", .caption = "one", .action = [&] { chosen += 'a'; }},
                            {.name = "b", .caption = "two", .action = [&] { chosen += 'b'; }}};
                    }};
    QtDesktop desktop(desk.loop);
    list().setFocus();
    const QWidget& window = desk.widget("mp3s");
    const QPoint places[] = {window.geometry().topLeft() + QPoint(5, 5), {1, 1}};
    for (const QPoint& place : places) {
        point(place);
        EXPECT_TRUE(comes(desk, [&] { return QCursor::pos() == place; }));
        desk.run([&] { desktop.popUp(menu); });
        EXPECT_TRUE(comes(desk, [] { return QApplication::activePopupWidget() != nullptr; }));
        EXPECT_TRUE(window.geometry().contains(QApplication::activePopupWidget()->pos()));
        hand({"key", "Down", "Down", "Return"});
        EXPECT_TRUE(comes(desk, [] { return !QApplication::activePopupWidget(); }));
    }
    desk.settle();
    EXPECT_EQ(chosen, "bb");
}

// A bar at the row's left edge, in the colour of what is written there.
TEST_F(ListMenuTest, MarksTheSongInPlay) {
    const auto marked = [&] {
        desk.settle();
        const QImage drawn = list().viewport()->grab().toImage();
        const double dots = drawn.devicePixelRatio();
        std::string seen;
        for (int row = 0; row < 3; ++row) {
            const QRect place = list().visualRect(list().model()->index(row, 0));
            const QPoint left = QPoint(place.left(), place.center().y()) * dots;
            seen += drawn.pixelColor(left) == list().palette().color(QPalette::Text) ? '#' : '.';
        }
        return seen;
    };
    const std::pair<const char*, const char*> acts[] = {{"'play b", ".#."},
                                                        {"'next", "..#"},
                                                        {"'pause", "..#"},
                                                        {"'listrmv a  ", ".#."},
                                                        {"'stop", "..."}};
    EXPECT_EQ(marked(), "...");
    for (const auto& [line, seen] : acts) {
        desk.owner(line);
        EXPECT_EQ(marked(), seen) << line;
    }
    desk.owner("'play b");
    desk.settle();
    auto* const aloud = QAccessible::queryAccessibleInterface(&list());
    EXPECT_EQ(aloud->child(0)->text(QAccessible::Name), "b, in play");
    EXPECT_EQ(aloud->child(1)->text(QAccessible::Name), "c");
}

TEST(Playlist, KeepsTheSongInPlayInSight) {
    Lines songs;
    for (int song = 10; song < 70; ++song)
        songs.push_back(std::to_string(song) + ".mp3");
    Desk desk(songs);
    desk.owner("'num 40");
    desk.show("mp3s");
    auto& list = desk.control<QListView>("mp3s", "playlistView");
    const auto isInSight = [&](int song) {
        desk.settle();
        const QRect row = list.visualRect(list.model()->index(song - 1, 0));
        return list.viewport()->rect().contains(row);
    };
    EXPECT_TRUE(isInSight(40));
    desk.owner("'num 5");
    EXPECT_TRUE(isInSight(5));
    list.scrollToBottom();
    desk.owner("'num 20");
    EXPECT_FALSE(isInSight(20)) << "he looks at something else";
}

} // namespace
} // namespace larkspin
