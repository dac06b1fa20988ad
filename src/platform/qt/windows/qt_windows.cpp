#include "platform/qt/windows/qt_windows.h"

#include "platform/qt/windows/window_view.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QScreen>
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
            if (!shown.view && shown.hand.window().visible)
                shown.view = std::make_unique<WindowView>(shown.hand);
            if (shown.view)
                hasChanged = shown.view->refresh(others) || hasChanged;
        }
        return hasChanged;
    }
};

QtWindows::QtWindows(EventLoop& loop, const std::vector<Window*>& windows, const HandTells& tells)
    : all_(std::make_shared<All>()) {
    describeWindowsAloud();
    for (Window* window : windows)
        all_->windows.push_back({Hand(loop, *window, tells)});
    for (QScreen* screen : QGuiApplication::screens())
        all_->watch(screen);
    All* const all = all_.get();
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
