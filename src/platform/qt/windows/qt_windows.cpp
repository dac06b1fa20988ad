#include "platform/qt/windows/qt_windows.h"

#include "platform/qt/windows/window_view.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

struct Shown {
    Hand hand;
    std::unique_ptr<WindowView> view = {};
};

} // namespace

struct QtWindows::All : QObject {
    std::vector<Shown> windows;
    Neighbours neighbours;
    bool areOtherScreens = false;

    void watch(QScreen* screen) {
        connect(screen, &QScreen::availableGeometryChanged, this, [this] { remember(); });
    }
    void remember() {
        areOtherScreens = true;
        QCoreApplication::postEvent(this, new QEvent(QEvent::User)); // so that there is a turn
    }
    bool refresh() {
        const bool others = std::exchange(areOtherScreens, false);
        bool hasChanged = false;
        for (Shown& shown : windows) {
            Window& window = shown.hand.window();
            if (!shown.view && window.visible)
                shown.view = std::make_unique<WindowView>(shown.hand, neighbours);
            const Place before = window.place;
            if (shown.view)
                hasChanged = shown.view->refresh(others) || hasChanged;
            moveAlong(window, before);
        }
        return hasChanged;
    }
    // What stands on a window is described by where that one was.
    void moveAlong(const Window& moved, const Place& before) {
        for (Shown& shown : windows) {
            Window& window = shown.hand.window();
            if (window.standsOn != &moved)
                continue;
            window.place.left += moved.place.left - before.left;
            window.place.top += moved.place.top - before.top;
        }
    }
    int above(const Window& stoodOn) const {
        int most = 0;
        for (const Shown& shown : windows)
            if (const Window& window = shown.hand.window();
                window.visible && window.standsOn == &stoodOn)
                most = std::max(most, stoodOn.place.top - window.place.top);
        return most;
    }
    // One that belongs in the middle comes and goes by itself, as at the start. No other window
    // keeps clear of its place, which is free in a moment.
    std::vector<QRect> placesBut(const Window& window) const {
        std::vector<QRect> places;
        for (const Shown& shown : windows)
            if (shown.view && shown.view->isVisible() && &shown.hand.window() != &window &&
                !shown.hand.window().centred)
                places.push_back(shown.view->geometry());
        return places;
    }
};

QtWindows::QtWindows(EventLoop& loop, const std::vector<Window*>& windows, const HandTells& tells,
                     const MainWindow& main)
    : all_(std::make_shared<All>()) {
    describeWindowsAloud();
    for (Window* window : windows)
        all_->windows.push_back({Hand(loop, *window, tells)});
    for (QScreen* screen : QGuiApplication::screens())
        all_->watch(screen);
    All* const all = all_.get();
    all->neighbours = {main, [all](const Window& window) { return all->placesBut(window); },
                       [all](const Window& window) { return all->above(window); }};
    QObject::connect(qApp, &QGuiApplication::screenAdded, all, [all](QScreen* screen) {
        all->watch(screen);
        all->remember();
    });
    QObject::connect(qApp, &QGuiApplication::screenRemoved, all, [all] { all->remember(); });
    // The loop keeps this task for longer than the windows live.
    loop.beforeSleep([&loop, held = std::weak_ptr(all_)] {
        const auto lasting = held.lock();
        if (lasting && lasting->refresh())
            loop.post([] {}); // one more turn, in which Qt sends it to the display
    });
}

QtWindows::~QtWindows() = default;

QWidget* QtWindows::widgetOf(const Window& window) const {
    for (const Shown& shown : all_->windows)
        if (&shown.hand.window() == &window)
            return shown.view.get();
    return nullptr;
}

} // namespace larkspin
