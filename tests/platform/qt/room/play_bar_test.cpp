// The bar for the song in play, worked by a real mouse and real keys.
#include "platform/qt/room/play_bar.h"

#include "platform/qt/windows/real_mouse.h"

#include <QAccessible>
#include <QApplication>
#include <QToolTip>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

const std::string longName = "c <b>long  " + std::string(120, 'o');

struct Repaints : QObject {
    explicit Repaints(QWidget& widget) { widget.installEventFilter(this); }
    int count = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::Paint;
        return false;
    }
};

struct PlayBarTest : testing::Test {
    PlayBarTest() {
        auto* const layout = new QVBoxLayout(&window);
        layout->addWidget(&bar);
        window.resize(600, 90);
        window.move(100, 100);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        window.activateWindow();
        EXPECT_TRUE(comes(desk, [&] { return window.isActiveWindow(); }));
    }

    template <typename Widget = QWidget> Widget& part(const char* name) {
        return *bar.findChild<Widget*>(name);
    }
    std::string text(const char* label) { return part<QLabel>(label).text().toStdString(); }
    std::string spoken(const char* name) {
        auto* const aloud = QAccessible::queryAccessibleInterface(&part(name));
        return aloud->text(QAccessible::Name).toStdString();
    }
    QSlider& position() { return part<QSlider>("position"); }
    double second() { return desk.player.CurrentPosition(); }

    // A share of the part's width.
    QPoint at(const char* name, double share = 0.5) {
        const QRect within = part(name).rect();
        return part(name).mapToGlobal(
            QPoint(static_cast<int>(within.width() * share), within.center().y()));
    }
    void click(const char* name, double share = 0.5, const char* button = "1") {
        point(at(name, share));
        hand({"click", button});
    }
    bool isAbout(double wanted) {
        return comes(desk, [&] { return std::abs(second() - wanted) < 4; });
    }

    Desk desk{{"a.mp3", "b.mp3", longName + ".mp3"}};
    QWidget window;
    int presses = 0;
    PlayBar& bar =
        *new PlayBar(desk.loop, desk.program->playback.songInPlay, [this] { ++presses; });
};

TEST_F(PlayBarTest, PlaysPausesAndGoesToOtherSongsByTheMouse) {
    EXPECT_EQ(text("songName"), "nothing plays");
    const std::tuple<const char*, std::string, std::string> clicks[] = {
        {"play", "in play: a", "pause"},     {"play", "paused: a", "play"},
        {"play", "in play: a", "pause"},     {"next", "in play: b", "pause"},
        {"previous", "in play: a", "pause"}, {"previous", "in play: " + longName, "pause"},
    };
    desk.forget();
    for (const auto& [button, song, does] : clicks) {
        click(button);
        EXPECT_TRUE(comes(desk, [&, name = song] { return spoken("songName") == name; })) << song;
        EXPECT_EQ(spoken("play"), does);
    }
    EXPECT_EQ(presses, 6);
    EXPECT_EQ(desk.allSaid(), Lines{});
    desk.owner("'stop");
    desk.settle();
    EXPECT_EQ(spoken("songName"), "stopped: " + longName);
    EXPECT_EQ(text("songTime"), "");
    EXPECT_FALSE(position().isEnabled());
    const std::pair<const char*, std::string> keys[] = {{"XF86AudioPlay", "in play: " + longName},
                                                        {"XF86AudioPlay", "paused: " + longName},
                                                        {"XF86AudioNext", "in play: a"}};
    for (const auto& [key, song] : keys) {
        hand({"key", key});
        EXPECT_TRUE(comes(desk, [&, name = song] { return spoken("songName") == name; })) << song;
    }
}

TEST_F(PlayBarTest, SeeksByMouseWheelAndKeys) {
    desk.owner("'play a");
    desk.settle();
    click("position", 0.75);
    EXPECT_TRUE(isAbout(75));
    hand({"click", "5"}); // the wheel
    EXPECT_TRUE(isAbout(60));
    EXPECT_FALSE(position().hasFocus());
    position().setFocus();
    hand({"key", "Right", "Right"});
    EXPECT_TRUE(isAbout(70));
    hand({"key", "Home"});
    EXPECT_TRUE(isAbout(0));
    point(at("position", 0.02));
    hand({"mousedown", "1"});
    point(at("position", 0.4));
    EXPECT_TRUE(comes(desk, [&] { return std::abs(position().sliderPosition() - 40) < 4; }));
    EXPECT_EQ(text("songTime"), "0:" + std::to_string(position().sliderPosition()) + " / 1:40");
    EXPECT_TRUE(isAbout(0)) << "it isn't let go of yet";
    hand({"mouseup", "1"});
    EXPECT_TRUE(isAbout(40));
}

TEST_F(PlayBarTest, DoesntSeekInTheSongAfterTheOneThatWasHeld) {
    desk.owner("'play a");
    desk.settle();
    point(at("position", 0.02));
    hand({"mousedown", "1"});
    EXPECT_TRUE(comes(desk, [&] { return position().isSliderDown(); }));
    desk.owner("'next");
    point(at("position", 0.6));
    EXPECT_TRUE(comes(desk, [&] { return position().sliderPosition() > 50; }));
    hand({"mouseup", "1"});
    EXPECT_TRUE(comes(desk, [&] { return !position().isSliderDown(); }));
    desk.settle();
    EXPECT_LT(second(), 5);
    EXPECT_LT(position().value(), 5);
}

TEST_F(PlayBarTest, SetsVolumeAndMode) {
    for (const auto& [share, button, volume] :
         {std::tuple(0.9, "1", 95), {0.9, "5", 89}, {0.9, "4", 95}, {0.02, "1", 0}}) {
        click("volume", share, button);
        EXPECT_TRUE(
            comes(desk, [&, v = volume] { return std::abs(desk.state().HScroll2 - v) < 6; }))
            << volume << desk.state().HScroll2;
    }
    EXPECT_TRUE(desk.player.mute);
    click("mode");
    EXPECT_TRUE(comes(desk, [&] { return QApplication::activePopupWidget() != nullptr; }));
    hand({"key", "Down", "Down", "Down", "Return"});
    EXPECT_TRUE(comes(desk, [&] { return desk.state().crand; }));
    desk.settle();
    EXPECT_EQ(spoken("mode"), "mode: shuffle");
    desk.owner("'cont");
    desk.settle();
    EXPECT_EQ(part<QAbstractButton>("mode").text(), "continuous");
}

TEST_F(PlayBarTest, IsReachedByTabAndSpoken) {
    const std::pair<const char*, const char*> parts[] = {
        {"previous", "previous song"}, {"play", "play"},     {"next", "next song"},
        {"position", "position"},      {"volume", "volume"}, {"mode", "mode: no mode"}};
    desk.owner("'play a");
    desk.owner("'pause");
    desk.settle();
    part("mode").setFocus();
    for (const auto& [name, words] : parts) {
        hand({"key", "Tab"});
        EXPECT_TRUE(comes(desk, [&, next = name] { return part(next).hasFocus(); })) << name;
        EXPECT_EQ(spoken(name), words);
    }
    part("play").setFocus();
    for (const char* const key : {"Return", "space"}) {
        const PlayState before = desk.player.PlayState();
        hand({"key", key});
        EXPECT_TRUE(comes(desk, [&] { return desk.player.PlayState() != before; })) << key;
    }
}

TEST_F(PlayBarTest, TellsTheWholeNameWhereItIsCut) {
    desk.owner("'play long");
    desk.settle();
    point(at("songName", 0.2));
    point(at("songName", 0.3));
    EXPECT_TRUE(comes(desk, [&] { return QToolTip::isVisible(); }));
    EXPECT_TRUE(QToolTip::text().contains(">c &lt;b&gt;long  o")) << QToolTip::text().toStdString();
}

TEST_F(PlayBarTest, MovesOnceASecondWhileItIsInSightAndNotAtAllOtherwise) {
    desk.owner("'play a");
    desk.settle();
    const auto passes = [&](int seconds) {
        for (int step = 0; step < 10 * seconds; ++step) {
            desk.advance(100ms);
            QCoreApplication::processEvents();
        }
        desk.settle();
    };
    Repaints repaints(part("songTime"));
    passes(5);
    EXPECT_EQ(text("songTime"), "0:05 / 1:40");
    EXPECT_LE(repaints.count, 7);
    EXPECT_GE(repaints.count, 4);
    for (const bool isMinimized : {true, false}) {
        isMinimized ? window.showMinimized() : window.hide();
        const auto isAway = [&] { return window.isMinimized() || !window.isVisible(); };
        EXPECT_TRUE(comes(desk, isAway));
        const std::string before = text("songTime");
        passes(5);
        EXPECT_EQ(text("songTime"), before);
        window.showNormal();
        EXPECT_TRUE(comes(desk, [&] { return text("songTime") != before; }));
    }
    desk.owner("'stop");
    desk.settle();
    repaints.count = 0;
    passes(5);
    EXPECT_EQ(repaints.count, 0);
}

} // namespace
} // namespace larkspin
