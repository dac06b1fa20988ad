#include "platform/qt/windows/window_view.h"

#include "platform/qt/looks.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/task_bar.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QShortcut>
#include <QTimer>
#include <QWindow>
#include <chrono>
#include <utility>

namespace larkspin {

namespace {

constexpr int outline = 1;                                    // in pixels
constexpr auto managersTime = std::chrono::milliseconds(300); // to minimize windows
constexpr int keyboardWay = 12;                               // by which a key moves the window

QAccessibleInterface* windowAloud(const QString&, QObject* object) {
    auto* const view = dynamic_cast<WindowView*>(object);
    return view ? new QAccessibleWidget(view, QAccessible::Window, view->windowTitle()) : nullptr;
}

// A window that appears must not cover a dialog that waits for an answer. Qt lists its windows in
// the order in which they were made.
void raiseDialogs() {
    for (QWindow* window : QGuiApplication::topLevelWindows())
        if (window->type() == Qt::Dialog && window->isVisible())
            window->raise();
}

} // namespace

void describeWindowsAloud() {
    QAccessible::installFactory(&windowAloud);
}

WindowView::WindowView(const Hand& hand, const Neighbours& neighbours)
    : QWidget(nullptr,
              (neighbours.main.exists() ? Qt::Tool : Qt::Window) | Qt::FramelessWindowHint),
      hand_(hand), window_(hand.window()), neighbours_(neighbours),
      mover_(window_, *this, neighbours), inside_(this) {
    setWindowTitle(toQt(window_.spoken.empty() ? window_.name : window_.spoken));
    setAttribute(Qt::WA_ShowWithoutActivating); // the owner goes on typing in his chat
    addMoveKeys();
    for (const Control& control : window_.controls)
        controls_.push_back(makeView({hand_, mover_, inside_}, control));
    if (window_.onDrop)
        drops_.emplace(*this, [this](const std::vector<std::string>& paths) {
            hand_.does([paths](Window& window) { drop(window, paths); });
        });
}

WindowView::~WindowView() = default;

void WindowView::addMoveKeys() {
    const std::pair<Qt::Key, QPoint> ways[] = {{Qt::Key_Left, {-keyboardWay, 0}},
                                               {Qt::Key_Right, {keyboardWay, 0}},
                                               {Qt::Key_Up, {0, -keyboardWay}},
                                               {Qt::Key_Down, {0, keyboardWay}}};
    for (const auto& [key, way] : ways) {
        auto* const shortcut = new QShortcut(QKeySequence(Qt::ALT | key), this);
        connect(shortcut, &QShortcut::activated, this, [this, step = way] { mover_.nudge(step); });
    }
}

// A minimized window is hidden and shown again when it is called for. Asked to restore it, a window
// manager would give it the keyboard.
bool WindowView::refresh(bool areOtherScreens) {
    const bool isCalled = std::exchange(calls_, window_.calls) != window_.calls;
    const bool comesBack = isCalled && isVisible() && isMinimized();
    if (comesBack)
        hide();
    const bool wasAlong = isAlong_;
    goWithMain(isCalled);
    const bool shows = window_.visible && !isAlong_;
    // Size and contents come first, so that nothing is seen of what the window held before.
    const bool appears = shows && !isVisible();
    bool hasChanged = false;
    if (shows) {
        hasChanged = refreshFrame();
        for (const auto& control : controls_)
            control->refresh(logicalDpiX());
        const bool isNew = appears && (isCalled || !wasAlong);
        hasChanged = mover_.refresh(isNew, areOtherScreens) || hasChanged;
    }
    if (shows != isVisible()) {
        hasChanged = true;
        setWindowState(windowState() & ~Qt::WindowMinimized);
        if (shows)
            appear();
        else
            disappear();
        if (comesBack && shows)
            stayOnTopAgain();
    }
    if (shows && (appears || isCalled)) {
        hasChanged = true;
        raise();
        raiseDialogs();
    }
    return hasChanged;
}

// With the main window go those that are in sight then. Most window managers see to that, and take
// it amiss when the windows go by themselves meanwhile. One that is called for meanwhile comes.
void WindowView::goWithMain(bool isCalled) {
    const bool isAway = neighbours_.main.isAway();
    const bool wasAway = std::exchange(wasMainAway_, isAway);
    const bool begins = isAway && !wasAway;
    if (begins)
        QTimer::singleShot(managersTime, this, [this] { leaves_ = goesWithMain_; });
    goesWithMain_ = isAway && !isCalled && (begins ? window_.visible : goesWithMain_);
    leaves_ = leaves_ && goesWithMain_;
    const bool isAlong = leaves_ && window_.visible && !isMinimized();
    if (std::exchange(isAlong_, isAlong) != isAlong)
        window_.minimized = isAlong;
}

// While the main window is away a window that belongs to it might not be shown.
void WindowView::appear() {
    if (neighbours_.main.exists()) {
        create();
        windowHandle()->setTransientParent(neighbours_.main.isAway() ? nullptr
                                                                     : neighbours_.main.handle());
        keepOffTaskBar(*windowHandle());
    }
    setVisible(true);
}

// A window manager that hasn't come to show the window yet may do so when it has been taken back,
// and it would stay there. One that doesn't exist any more can't be shown.
void WindowView::disappear() {
    const bool wasSeen = windowHandle() && windowHandle()->isExposed();
    setVisible(false);
    if (!wasSeen)
        destroy();
}

// A window manager that has just seen the window disappear may forget that it is to stay on top.
void WindowView::stayOnTopAgain() {
    for (const bool isOnTop : {false, window_.onTop})
        windowHandle()->setFlag(Qt::WindowStaysOnTopHint, isOnTop);
}

bool WindowView::refreshFrame() {
    bool hasChanged = false;
    if (window_.onTop != windowFlags().testFlag(Qt::WindowStaysOnTopHint))
        setWindowFlag(Qt::WindowStaysOnTopHint, window_.onTop); // and hides it
    const QSize size = pixelsOf(window_.place, logicalDpiX()).size();
    if (inside_.size() != size) {
        hasChanged = true;
        inside_.setGeometry(QRect(QPoint(outline, outline), size));
        setFixedSize(size + QSize(2 * outline, 2 * outline));
    }
    if (background_ != window_.background) {
        background_ = window_.background;
        setPalette(paletteOf(aqua, window_.background));
        update();
    }
    if (alpha_ != window_.alpha) {
        alpha_ = window_.alpha;
        setWindowOpacity(alpha_ / 255.0);
        hasChanged = true;
    }
    return hasChanged;
}

void WindowView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    drawOutline(painter, rect(), outlineOf(window_.background));
}

void WindowView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::WindowStateChange)
        window_.minimized = isAlong_ || isMinimized();
    QWidget::changeEvent(event);
}

void WindowView::moveEvent(QMoveEvent*) {
    mover_.moved();
}

// The window manager closes the window. This counts as a press on its close label; a window without
// one is hidden.
void WindowView::closeEvent(QCloseEvent* event) {
    event->ignore();
    hand_.does([](Window& window) {
        if (!closeWindow(window))
            window.visible = false;
    });
}

void WindowView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        hand_.does([](Window& window) { closeWindow(window); });
    else
        QWidget::keyPressEvent(event);
}

void WindowView::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() == QContextMenuEvent::Keyboard)
        hand_.opensTitleMenu();
}

} // namespace larkspin
