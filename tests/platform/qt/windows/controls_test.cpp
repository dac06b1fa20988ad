// The controls of the windows as their owner works them: by mouse, by keyboard and by a screen
// reader.
#include "platform/qt/windows/real_mouse.h"
#include "shell/control_events.h"
#include "text/row_list.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QDropEvent>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QScrollBar>
#include <QSlider>
#include <algorithm>
#include <gtest/gtest.h>

namespace larkspin {

namespace {

QPoint middleOfRow(QListView& list, int row) {
    return list.visualRect(list.model()->index(row, 0)).center();
}

// As slowly as a person, who sees what the press does.
void clickRow(Desk& desk, QListView& list, int row, Qt::KeyboardModifiers keys = {}) {
    QTest::mousePress(list.viewport(), Qt::LeftButton, keys, middleOfRow(list, row));
    desk.settle();
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, keys, middleOfRow(list, row));
    desk.settle();
}

struct PaintCounter : QObject {
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
    int paints = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        paints += event->type() == QEvent::Paint;
        return false;
    }
};

Lines numbered(int count) {
    Lines songs;
    for (int song = 0; song < count; ++song)
        songs.push_back("song " + std::to_string(song) + ".mp3");
    return songs;
}

} // namespace

TEST(Controls, AreWorkedByKeyboardAndScreenReaderAsByMouse) {
    using Work = std::function<void(QWidget&)>;
    const std::pair<const char*, Work> works[] = {
        {"return", [](QWidget& button) { QTest::keyClick(&button, Qt::Key_Return); }},
        {"space", [](QWidget& button) { QTest::keyClick(&button, Qt::Key_Space); }},
        {"aloud", [](QWidget& button) {
             auto* const aloud = QAccessible::queryAccessibleInterface(&button);
             EXPECT_EQ(aloud->role(), QAccessible::Button);
             EXPECT_EQ(aloud->text(QAccessible::Name), "next song");
             aloud->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
         }}};
    for (const auto& [how, work] : works) {
        SCOPED_TRACE(how);
        Desk desk;
        desk.owner("'num 1");
        desk.show("mp3s");
        work(desk.control("mp3s", "nextButton"));
        EXPECT_TRUE(comes(desk, [&] { return desk.player.opened.back().ends_with("b.mp3"); }));
        desk.settle();
        EXPECT_EQ(desk.player.opened.size(), 2u) << "pressed once";
    }
}

TEST(Controls, GoThroughAllThatCanBeWorkedByTab) {
    Desk desk;
    QWidget& window = desk.show("mp3s");
    window.activateWindow();
    ASSERT_TRUE(comes(desk, [&] { return window.isActiveWindow(); }));
    std::vector<std::string> reached;
    for (int step = 0; step < 16; ++step) {
        QTest::keyClick(&window, Qt::Key_Tab);
        if (const QWidget* const focus = QApplication::focusWidget())
            reached.push_back(focus->objectName().toStdString());
    }
    const Lines all{"closeButton", "prevButton",   "playButton",  "pauseButton",
                    "nextButton",  "openButton",   "HScroll2",    "HScroll3",
                    "Command1",    "Command2",     "Command3",    "Command5",
                    "Command6",    "playlistView", "renameLabel", "mediaCaption"};
    EXPECT_EQ(reached, all);
    QTest::keyClick(&window, Qt::Key_Escape);
    desk.settle();
    EXPECT_FALSE(desk.window("mp3s").visible);
}

TEST(Controls, MoveByTheKeyboardAndOfferTheTraysMenu) {
    Desk desk;
    QWidget& window = desk.show("notez");
    window.activateWindow();
    ASSERT_TRUE(comes(desk, [&] { return window.isActiveWindow(); }));
    const int left = desk.window("notez").place.left;
    QTest::keyClick(&window, Qt::Key_Right, Qt::AltModifier);
    desk.settle();
    EXPECT_GT(desk.window("notez").place.left, left);
    QWidget &title = desk.control("notez", "Label1"), &other = desk.control("notez", "Label2");
    const std::tuple<QWidget&, QContextMenuEvent::Reason, int> asks[] = {
        {title, QContextMenuEvent::Mouse, 1},
        {title, QContextMenuEvent::Keyboard, 1},
        {other, QContextMenuEvent::Mouse, 0},
        {other, QContextMenuEvent::Keyboard, 1}};
    for (const auto& [where, reason, menus] : asks) {
        QContextMenuEvent asked(reason, {5, 5}, {5, 5});
        QApplication::sendEvent(&where, &asked);
        desk.settle();
        EXPECT_EQ(std::exchange(desk.titleMenus, 0), menus) << reason;
    }
}

TEST(Controls, SelectRowsAsTheirListsDo) {
    Desk desk(numbered(40));
    desk.show("mp3s");
    auto& list = desk.control<QListView>("mp3s", "playlistView");
    RowList& rows = desk.state().playlistView;
    using Rows = std::vector<int>;
    const std::tuple<const char*, std::function<void()>, Rows, int> acts[] = {
        {"a click", [&] { clickRow(desk, list, 3); }, {3}, 3},
        {"with Shift", [&] { clickRow(desk, list, 1, Qt::ShiftModifier); }, {1, 2, 3}, 1},
        {"with Ctrl", [&] { clickRow(desk, list, 2, Qt::ControlModifier); }, {1, 3}, 3},
        {"a key", [&] { QTest::keyClick(&list, Qt::Key_Home); }, {0}, 0},
        {"Shift+key", [&] { QTest::keyClick(&list, Qt::Key_Down, Qt::ShiftModifier); }, {0, 1}, 1},
        {"from the program", [&] { rows.choose(30); }, {30}, 30},
        {"rows that go", [&] { desk.owner("'listrmv song 0"); }, {29}, 29},
        {"beside the rows", [&] { QTest::mouseClick(list.viewport(), Qt::RightButton); }, {29}, 29},
    };
    for (const auto& [what, act, selected, current] : acts) {
        SCOPED_TRACE(what);
        act();
        desk.settle();
        for (int row = 0; row < 40; ++row) {
            const bool isSelected = std::ranges::count(selected, row) > 0;
            EXPECT_EQ(rows.isSelected(row), isSelected) << row;
            EXPECT_EQ(list.selectionModel()->isRowSelected(row), isSelected) << row;
        }
        EXPECT_EQ(rows.currentIndex(), current);
        EXPECT_EQ(list.currentIndex().row(), current);
    }
    EXPECT_TRUE(list.viewport()->rect().contains(middleOfRow(list, 29))) << "scrolled to";
    const int row = list.visualRect(list.currentIndex()).height();
    EXPECT_GE(row, list.fontMetrics().height());
    EXPECT_EQ(list.viewport()->height() % row, 0) << "whole rows";
}

TEST(Controls, StartTheRowThatIsClickedTwiceOrTakenByReturn) {
    Desk desk;
    desk.show("mp3s");
    auto& list = desk.control<QListView>("mp3s", "playlistView");
    clickRow(desk, list, 1);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, middleOfRow(list, 1));
    desk.settle();
    EXPECT_EQ(desk.said(), "playing:  <b>2</b>.  b");
    QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_Return);
    desk.settle();
    EXPECT_EQ(desk.said(), "playing:  <b>3</b>.  c");
    desk.dialogs.answers = {"yes"};
    QTest::keyClick(&list, Qt::Key_Delete);
    desk.settle();
    EXPECT_EQ(desk.state().playlistView.count(), 2);
}

TEST(Controls, ShowEveryNameAsItIs) {
    Desk desk({"who?.mp3"});
    desk.show("mp3s");
    desk.owner("'num 1");
    desk.state().playlistTitle = " playlist:  a\uF03F.lkl";
    desk.state().mediaCaption = "  who\uF03F";
    desk.settle();
    auto& list = desk.control<QListView>("mp3s", "playlistView");
    EXPECT_EQ(list.model()->index(0, 0).data().toString().toStdString(), "who?");
    for (const auto& [name, words] : {std::pair("playlistTitle", "playlist: a?.lkl"),
                                      {"mediaCaption", "who?"},
                                      {"playlistView", "songs"}})
        EXPECT_EQ(desk.control("mp3s", name).accessibleName().toStdString(), words);
}

// Whatever colours the owner gives to words and strips.
TEST(Controls, HaveAnXThatCanBeSeen) {
    Desk desk;
    for (Window* window : desk.program->windows()) {
        const auto isX = [](const Control& c) { return c.text && c.text() == "  X"; };
        const auto x = std::ranges::find_if(window->controls, isX);
        if (x == window->controls.end())
            continue;
        for (const Color ground : {Color{0}, Color{0xFFFFFF}, Color{0x808080}}) {
            SCOPED_TRACE(window->name + ' ' + std::to_string(ground));
            x->foreground = x->background = ground;
            desk.show(window->name);
            const QImage drawn = desk.control(window->name, x->name.c_str()).grab().toImage();
            int furthest = 0;
            for (int at = 0; at < drawn.width() * (drawn.height() - 1); ++at)
                furthest = std::max(
                    furthest, std::abs(qGray(drawn.pixel(at % drawn.width(), at / drawn.width())) -
                                       static_cast<int>(ground & 0xFF)));
            EXPECT_GT(furthest, 50);
        }
    }
}

TEST(Controls, DrawManyChangesOnceAndKeepTheirPlaceInTheList) {
    Desk desk(numbered(300));
    desk.show("mp3s");
    auto& list = desk.control<QListView>("mp3s", "playlistView");
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&desk.widget("mp3s")));
    clickRow(desk, list, 0); // which stays where it is, out of sight
    list.verticalScrollBar()->setValue(120);
    desk.settle();
    PaintCounter counter(*list.viewport());
    for (int row = 0; row < 20'000; ++row)
        desk.state().playlistView.add("zz" + std::to_string(row));
    desk.settle();
    EXPECT_EQ(counter.paints, 1);
    EXPECT_EQ(list.model()->rowCount(), 20'300);
    EXPECT_EQ(list.verticalScrollBar()->value(), 120);
    desk.settle();
    EXPECT_EQ(counter.paints, 1) << "nothing has changed";
}

TEST(Controls, LetTheirWindowTakeWhatIsDroppedOnThem) {
    Desk desk;
    desk.show("mp3s");
    desk.show("notez");
    QMimeData files;
    QList<QUrl> urls = {QUrl("https://example.org/a.mp3"), QUrl("file://elsewhere.example/a.mp3")};
    for (const char* below : {"new/two words.mp3", "100%.ogg"}) {
        desk.disk.write(below, "");
        urls.append(
            QUrl::fromLocalFile(QString::fromStdString((desk.disk.path() / below).native())));
    }
    files.setUrls(urls);
    const auto dragged = [&](QWidget& target) {
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, {});
        QApplication::sendEvent(&target, &enter);
        return enter.isAccepted();
    };
    QWidget& list = *desk.control<QListView>("mp3s", "playlistView").viewport();
    EXPECT_FALSE(dragged(desk.control("notez", "Text1")));
    EXPECT_TRUE(dragged(desk.control("mp3s", "HScroll2")));
    EXPECT_TRUE(dragged(list));
    QDropEvent drop({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, {});
    QApplication::sendEvent(&list, &drop);
    desk.advance(5s);
    const RowList& rows = desk.state().playlistView;
    ASSERT_EQ(rows.count(), 5);
    EXPECT_EQ(rows.row(4).substr(0, 9), "two words");
    EXPECT_EQ(rows.row(0).substr(0, 4), "100%");
}

TEST(Controls, HoldValuesThatBothSidesChange) {
    Desk desk;
    desk.show("mp3s");
    auto& volume = desk.control<QSlider>("mp3s", "HScroll2");
    EXPECT_EQ(volume.accessibleName(), "volume");
    QTest::mouseClick(&volume, Qt::LeftButton, {}, volume.rect().topRight());
    desk.settle();
    EXPECT_EQ(desk.state().HScroll2, volume.maximum());
    int presses = desk.presses;
    desk.owner("'volume 40");
    desk.settle();
    EXPECT_EQ(desk.presses, presses);
    EXPECT_EQ(volume.value(), desk.state().HScroll2);
    const int before = volume.value();
    EXPECT_LT(before, volume.maximum());
    QTest::keyClick(&volume, Qt::Key_PageUp);
    desk.settle();
    EXPECT_EQ(desk.state().HScroll2, before + 10);

    desk.show("colors");
    auto& choice = desk.control<QComboBox>("colors", "Combo1");
    QTest::keyClick(&choice, Qt::Key_Home);
    desk.settle();
    RowList& rows = *desk.window("colors").control("Combo1").rows;
    EXPECT_EQ(rows.currentIndex(), 0);
    rows.setCurrentIndex(1);
    desk.settle();
    EXPECT_EQ(choice.currentIndex(), 1);
    QTest::keyClick(&choice, Qt::Key_Enter);
    EXPECT_TRUE(choice.view()->isVisible());
    choice.hidePopup();
    auto& tag = desk.control<QLineEdit>("colors", "Text1");
    presses = desk.presses;
    for (const char key : {'<', 'b', '>'}) {
        QTest::keyClick(&tag, key);
        desk.settle();
    }
    EXPECT_EQ(desk.presses, presses) << "typing is none";
    EXPECT_EQ(desk.window("colors").control("Text1").text(), "<b>");
    EXPECT_EQ(tag.text(), "<b>");
}

TEST(Controls, HearTheClickAfterADoubleClickThatEndsInAnotherWindow) {
    Desk desk;
    desk.says({"'sn one", "'sn two"});
    desk.show("notez");
    auto& list = desk.control<QListView>("notez", "List2");
    clickRow(desk, list, 0);
    const QPointF place = middleOfRow(list, 0);
    QMouseEvent again(QEvent::MouseButtonDblClick, place, place, Qt::LeftButton, Qt::LeftButton,
                      {});
    QApplication::sendEvent(list.viewport(), &again);
    clickRow(desk, list, 1);
    EXPECT_EQ(desk.control<QLineEdit>("notez", "Text1").text(), "two");
}

} // namespace larkspin
