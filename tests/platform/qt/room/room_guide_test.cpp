// A newcomer in the room's window: the first steps and the menus, by a real mouse and by keys.
#include "platform/qt/qt_text.h"
#include "platform/qt/room/first_steps_view.h"
#include "platform/qt/room/menu_bar_view.h"
#include "platform/qt/room/room_desk.h"
#include "platform/qt/room/room_guide.h"

#include <QLabel>
#include <QMenu>
#include <QProcess>
#include <QPushButton>
#include <functional>

namespace larkspin {
namespace {

struct RoomGuideTest : RoomDesk {
    RoomGuideTest() {
        machine.song("rock", "a ride.flac");
        preferences().lookIn({.music = machine.drive("music")});
        settle();
    }
    QPushButton* button(const QString& text) {
        for (auto* const each : view<FirstStepsView>().findChildren<QPushButton*>())
            if (each->text() == text && each->isVisible())
                return each;
        return nullptr;
    }
    static void clickAt(const QWidget& widget, const QPoint& place) {
        const QPoint at = widget.mapToGlobal(place) * widget.devicePixelRatio();
        QProcess::execute("xdotool", {"mousemove", "--sync", QString::number(at.x()),
                                      QString::number(at.y()), "click", "1"});
    }
    void click(const QString& text) {
        EXPECT_TRUE(comes([&] { return button(text) != nullptr; })) << text.toStdString();
        if (const QWidget* const each = button(text))
            clickAt(*each, each->rect().center());
    }
    static QMenu* opened() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
    void open(const char* menu) {
        auto& bar = view<MenuBarView>();
        for (const QAction* const each : bar.actions())
            if (each->text() == '&' + QString(menu))
                clickAt(bar, bar.actionGeometry(const_cast<QAction*>(each)).center());
        ASSERT_TRUE(comes([&] { return opened() != nullptr; })) << menu;
    }
    // By the mouse alone.
    void choose(const char* menu, const char* entry) {
        open(menu);
        ASSERT_NE(opened(), nullptr);
        for (QAction* const each : opened()->actions())
            if (each->text() == entry)
                clickAt(*opened(), opened()->actionGeometry(each).center());
        EXPECT_TRUE(comes([&] { return opened() == nullptr; })) << entry;
    }
    bool isPlaying() const { return !machine.player.opened.empty(); }
    bool areStepsSeen() { return view<FirstStepsView>().isVisible(); }
    std::string said() { return view<Transcript>().toPlainText().toStdString(); }

    int presses = 0;
    RoomGuide guide{machine.loop, *room, *machine.program, [this] { ++presses; }, ""};
};

TEST_F(RoomGuideTest, LeadsToTheFirstSongByItsThreeLinesClickedOrTyped) {
    click("'filter any");
    EXPECT_TRUE(comes([this] { return button("'filter any") == nullptr; }));
    for (const auto& step : guide.firstSteps.steps()) {
        if (areStepsSeen())
            click(toQt(step.line));
        else
            strike(step.line + "\n");
        EXPECT_TRUE(comes([&] { return said().find(step.line) != std::string::npos; }));
        machine.advance(1s);
    }
    EXPECT_TRUE(isPlaying());
    choose("help", "first steps");
    EXPECT_TRUE(comes([this] { return areStepsSeen(); }));
    EXPECT_EQ(presses, 1) << "of the menu";
    click("hide");
    EXPECT_TRUE(comes([this] { return !areStepsSeen(); }));
}

TEST_F(RoomGuideTest, SaysNothingAmongOthersThatTheOwnerHasntTyped) {
    strike("/connect plain irc.test Owner #music\n");
    EXPECT_TRUE(comes([this] { return !room->rooms.conversations.front().isAtHome(); }));
    server.sent.clear();
    click("'transfer");
    EXPECT_TRUE(comes([this] { return view<InputLine>().text() == "'transfer"; }));
    EXPECT_EQ(server.sent, Lines{});
}

TEST_F(RoomGuideTest, TakesWhatIsTypedOnceAMenuIsLeft) {
    const auto hand = [](const QStringList& does) { QProcess::execute("xdotool", does); };
    const std::function<void()> openings[] = {[this] { open("music"); },
                                              [&] {
                                                  hand({"key", "F10"});
                                              },
                                              [&] {
                                                  hand({"key", "alt+m"});
                                              }};
    for (const auto& openOne : openings) {
        openOne();
        EXPECT_TRUE(comes([] { return opened() != nullptr; }));
        hand({"key", "Escape"});
        EXPECT_TRUE(comes([] { return opened() == nullptr; }));
        EXPECT_TRUE(comes([this] { return view<InputLine>().hasFocus(); }));
        hand({"type", "'play ride"});
        EXPECT_TRUE(comes([this] { return view<InputLine>().text() == "'play ride"; }));
        EXPECT_EQ(opened(), nullptr);
        view<InputLine>().typing.empty();
    }
}

TEST_F(RoomGuideTest, OpensItsMenusAndHelpByKeys) {
    for (const auto& [key, first] :
         std::vector<std::pair<Qt::Key, const char*>>{{Qt::Key_R, "connect..."},
                                                      {Qt::Key_M, "add folder..."},
                                                      {Qt::Key_P, "previous"},
                                                      {Qt::Key_W, "media"},
                                                      {Qt::Key_H, "first steps"}}) {
        QTest::keyClick(&view<InputLine>(), key, Qt::AltModifier);
        ASSERT_TRUE(comes([&] { return opened() != nullptr; })) << first;
        for (const QAction* const each : opened()->actions())
            if (each->text() != first)
                EXPECT_TRUE(each->isEnabled()) << each->text().toStdString();
        EXPECT_EQ(opened()->actions().value(0)->text().toStdString(), first);
        QTest::keyClick(opened(), Qt::Key_Escape);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        EXPECT_TRUE(comes([&] { return opened() == nullptr; }));
    }
    QTest::keyClick(&view<InputLine>(), Qt::Key_F10);
    ASSERT_TRUE(comes([&] { return opened() != nullptr; }));
    EXPECT_EQ(opened()->activeAction(), opened()->actions().value(0)) << "for Return";
    QTest::keyClick(opened(), Qt::Key_Left); // from the first one to the last
    const auto isFilled = [&] { return opened() && opened()->actions().size() == 6; };
    ASSERT_TRUE(comes(isFilled));
    for (int entry = 0; entry < 6 && opened()->activeAction() != opened()->actions()[1]; ++entry)
        QTest::keyClick(opened(), Qt::Key_Down);
    QTest::keyClick(opened(), Qt::Key_Return);
    EXPECT_TRUE(comes([this] { return said().find("playing: 'play ") != std::string::npos; }))
        << said();
    view<Transcript>().clear();
    QTest::keyClick(&view<InputLine>(), Qt::Key_F1);
    EXPECT_TRUE(comes([this] { return said().find("playing: 'play ") != std::string::npos; }));
    view<Transcript>().clear();
    view<InputLine>().setFocus();
    strike("'help scan\n");
    EXPECT_TRUE(
        comes([this] { return said().find("such as 'scan ~/Music") != std::string::npos; }));
}

} // namespace
} // namespace larkspin
