// The windows beside the owner's main one: where they come up, and how they go and come with it.
#include "platform/qt/places.h"
#include "platform/qt/windows/real_mouse.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <gtest/gtest.h>
#include <xcb/xcb.h>

namespace larkspin {

namespace {

// A window whose left three quarters aren't to be covered.
struct Main : QWidget {
    explicit Main(const QRect& place) {
        setGeometry(place);
        show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(this));
    }
    QRect text() const { return {mapToGlobal(QPoint()), QSize(width() * 3 / 4, height())}; }
    MainWindow asMain() {
        return {*this, [this] { return std::vector{text()}; }};
    }
};

bool isOffTaskBar(const QWidget& widget) {
    xcb_connection_t* const connection =
        qApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
    const auto atom = [&](const std::string& name) {
        auto* const reply = xcb_intern_atom_reply(
            connection,
            xcb_intern_atom(connection, false, static_cast<std::uint16_t>(name.size()),
                            name.c_str()),
            nullptr);
        const xcb_atom_t found = reply->atom;
        std::free(reply);
        return found;
    };
    auto* const states = xcb_get_property_reply(
        connection,
        xcb_get_property(connection, false, static_cast<xcb_window_t>(widget.winId()),
                         atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 0, 64),
        nullptr);
    const auto* const each = static_cast<xcb_atom_t*>(xcb_get_property_value(states));
    const bool isOff =
        std::count(each, each + states->value_len, atom("_NET_WM_STATE_SKIP_TASKBAR")) == 1;
    std::free(states);
    return isOff;
}

// In another turn, since a window manager takes its time.
bool isShown(const QWidget& widget) {
    return widget.isVisible() && widget.windowHandle()->isExposed();
}

} // namespace

TEST(Places, BesideCoverTheTextLeastAndStandNear) {
    const QRect screen(0, 0, 1000, 800), left(100, 100, 500, 400), wide(100, 100, 800, 400);
    const QRect text(100, 100, 400, 400), wideText(100, 100, 600, 400);
    struct Case {
        const char* what;
        QRect main;
        std::vector<QRect> parts, others;
        QPoint corner;
        Near near = Near::top;
    };
    const Case cases[] = {
        {"right of it", left, {text}, {}, {606, 100}},
        {"below another one", left, {text}, {{606, 100, 300, 200}}, {606, 300}},
        {"below it", wide, {wideText}, {}, {700, 506}},
        {"over what isn't text", {0, 0, 1000, 800}, {{0, 0, 700, 800}}, {}, {700, 0}},
        {"left of it", {400, 0, 600, 800}, {{400, 0, 500, 800}}, {}, {94, 0}},
        {"not over the line",
         {0, 0, 1000, 800},
         {{0, 700, 1000, 30}, {0, 0, 900, 700}},
         {},
         {700, 0}},
        {"below the title",
         {0, 0, 1000, 800},
         {{0, 780, 1000, 20}, {0, 0, 1000, 20}, {0, 50, 900, 730}},
         {},
         {700, 26}},
        {"at its foot", left, {text}, {{606, 100, 300, 100}}, {606, 300}, Near::foot},
        {"not over its foot", screen, {{0, 0, 700, 800}}, {}, {700, 0}, Near::foot},
    };
    for (const auto& [what, main, parts, others, corner, near] : cases)
        EXPECT_EQ(cornerBeside(screen, {300, 200}, main, parts, others, near), corner) << what;
}

TEST(MainWindow, HasTheOthersBesideItUntilTheirOwnerMovesThem) {
    Main room({60, 60, 600, 400});
    Desk desk({"a.mp3"}, room.asMain());
    desk.show("dire"); // keeps no place from the first of the others
    for (Window* window : desk.program->windows()) {
        SCOPED_TRACE(window->name);
        QWidget& widget = desk.show(window->name);
        ASSERT_TRUE(comes(desk, [&] { return isShown(widget); }));
        EXPECT_TRUE((room.text() & widget.geometry()).isEmpty());
        EXPECT_EQ(window->place.left, widget.x() * 15);
        EXPECT_TRUE(isOffTaskBar(widget));
        window->visible = window->name == "mp3s";
    }
    EXPECT_EQ(desk.widget("mp3s").frameGeometry().top(), room.frameGeometry().top());
    desk.restart();
    EXPECT_EQ(desk.setting("mp3slpos"), "4500") << "the owner hasn't moved it";
    QWidget& media = desk.show("mp3s");
    ASSERT_TRUE(comes(desk, [&] { return isShown(media); }));
    hand({"windowmove", QString::number(media.winId()), "90", "120"});
    EXPECT_TRUE(comes(desk, [&] { return media.pos() == QPoint(90, 120); }));
    desk.restart();
    EXPECT_EQ(desk.setting("mp3slpos"), "1350");
    desk.show("mp3s");
    EXPECT_EQ(desk.widget("mp3s").pos(), QPoint(90, 120));
}

TEST(MainWindow, LeavesTheStopWindowWhereItBelongs) {
    Main room({0, 0, 500, 400}); // where nothing fits above it
    Desk desk({"ride.mp3", "ride on.mp3"}, room.asMain());
    desk.owner("'play ride");
    desk.owner("'view");
    desk.settle();
    desk.settle();
    const Place &stop = desk.window("stops").place, &choices = desk.window("larkmain").place;
    EXPECT_EQ(stop.left, choices.left);
    EXPECT_EQ(stop.top, choices.top - 300);
    EXPECT_EQ(desk.widget("stops").pos(), desk.widget("larkmain").pos() - QPoint(0, 20));
}

TEST(MainWindow, TakesTheOthersAlongAndBringsThemBack) {
    Main room({60, 60, 600, 400});
    Desk desk({"a.mp3"}, room.asMain());
    QWidget& media = desk.show("mp3s");
    QWidget& notes = desk.show("notez");
    const auto minimize = [&] {
        ASSERT_TRUE(comes(desk, [&] { return isShown(media); }));
        ASSERT_TRUE(comes(desk, [&] { return isShown(notes); }));
        hand({"windowminimize", QString::number(room.winId())});
        ASSERT_TRUE(comes(desk, [&] { return room.isMinimized(); }));
        ASSERT_TRUE(comes(desk, [&] { return !isShown(media); }));
        ASSERT_TRUE(comes(desk, [&] { return !isShown(notes); }));
        EXPECT_TRUE(comes(desk, [&] { return desk.window("mp3s").minimized; }));
        EXPECT_TRUE(desk.window("mp3s").visible);
    };
    minimize();
    const QPoint place = media.pos();
    room.showNormal();
    EXPECT_TRUE(comes(desk, [&] { return isShown(media); }));
    EXPECT_TRUE(comes(desk, [&] { return isShown(notes); }));
    EXPECT_FALSE(desk.window("mp3s").minimized);
    EXPECT_EQ(media.pos(), place);
    minimize();
    desk.owner("'media");
    EXPECT_TRUE(comes(desk, [&] { return isShown(media); })) << "called for";
    room.showNormal();
    EXPECT_TRUE(comes(desk, [&] { return isShown(notes); }));
    room.hide(); // to the tray
    EXPECT_TRUE(comes(desk, [&] { return !isShown(notes); }));
    room.show();
    EXPECT_TRUE(comes(desk, [&] { return isShown(notes); }));
}

} // namespace larkspin
