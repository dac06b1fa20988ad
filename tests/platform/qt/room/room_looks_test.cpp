// The room's window as its owner prefers it: text size, colours, and what closing it does.
#include "platform/qt/room/room_desk.h"

#include <QWheelEvent>

namespace larkspin {
namespace {

using RoomLooksTest = RoomDesk;

void turnWheel(QWidget& over, int by, Qt::KeyboardModifiers with) {
    QWheelEvent wheel({5, 5}, over.mapToGlobal(QPointF(5, 5)), {}, {0, by}, Qt::NoButton, with,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&over, &wheel);
}

TEST_F(RoomLooksTest, ShowTextAsLargeAsKeysWheelAndWordWantIt) {
    QWidget& said = *view<Transcript>().viewport();
    const auto key = [this](Qt::Key which) {
        return [this, which] { QTest::keyClick(&view<InputLine>(), which, Qt::ControlModifier); };
    };
    struct Case {
        const char* what;
        Task act;
        double points;
    };
    const Case cases[] = {
        {"plus", key(Qt::Key_Plus), 11},
        {"plus without shift", key(Qt::Key_Equal), 12},
        {"minus", key(Qt::Key_Minus), 11},
        {"wheel", [&] { turnWheel(said, 120, Qt::ControlModifier); }, 12},
        {"half a notch", [&] { turnWheel(said, -60, Qt::ControlModifier); }, 12},
        {"the other half", [&] { turnWheel(said, -60, Qt::ControlModifier); }, 11},
        {"wheel alone", [&] { turnWheel(said, 120, Qt::NoModifier); }, 11},
        {"over people",
         [&] { turnWheel(*view<PeopleView>().viewport(), 240, Qt::ControlModifier); }, 13},
        {"zero", key(Qt::Key_0), 10},
        {"word", [this] { strike("/textsize 200\n"); }, 20},
    };
    for (const auto& [what, act, points] : cases) {
        act();
        settle();
        EXPECT_DOUBLE_EQ(window().font().pointSizeF(), points) << what;
        EXPECT_DOUBLE_EQ(view<Transcript>().font().pointSizeF(), points) << what;
    }
    EXPECT_DOUBLE_EQ(QApplication::font().pointSizeF(), 18) << "of boxes and menus";
    machine.run([this] { room->keep(); });
    EXPECT_NE(machine.disk.read("data/larkspin.ini").find("\ntext size=200"), std::string::npos);
}

TEST_F(RoomLooksTest, TakeTheColoursThatTheOwnerWants) {
    struct Case {
        const char* word;
        int leastGround, mostGround, leastText, mostText; // of grey
    };
    for (const auto& [word, leastGround, mostGround, leastText, mostText] :
         {Case{"light", 230, 255, 0, 60}, Case{"dark", 10, 60, 200, 255},
          Case{"larkspin", 0, 0, 160, 255}}) {
        strike("/colours " + std::string(word) + "\n");
        const auto grey = [this](QPalette::ColorRole role) {
            return qGray(view<Transcript>().palette().color(role).rgb());
        };
        EXPECT_GE(grey(QPalette::Base), leastGround) << word;
        EXPECT_LE(grey(QPalette::Base), mostGround) << word;
        EXPECT_GE(grey(QPalette::Text), leastText) << word;
        EXPECT_LE(grey(QPalette::Text), mostText) << word;
    }
}

TEST_F(RoomLooksTest, CloseAsTheOwnerWants) {
    bool hasTray = false;
    room->hideInTrayIf([&] { return hasTray; });
    const auto isSeen = [this] { return window().isVisible() && !window().isMinimized(); };
    const auto closed = [&] {
        window().close();
        EXPECT_TRUE(comes([&] { return !isSeen(); }));
        const bool isHidden = !window().isVisible();
        room->show();
        EXPECT_TRUE(comes(isSeen));
        return isHidden ? "hidden" : "minimized";
    };
    EXPECT_STREQ(closed(), "minimized");
    preferences().setClosing(RoomClosing::tray);
    EXPECT_STREQ(closed(), "minimized") << "without a tray";
    hasTray = true;
    EXPECT_STREQ(closed(), "hidden");
    preferences().setClosing(RoomClosing::quit);
    window().close();
    settle();
    EXPECT_EQ(quits, 1);
}

} // namespace
} // namespace larkspin
