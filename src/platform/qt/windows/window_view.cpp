#include "platform/qt/windows/window_view.h"

#include "platform/qt/looks.h"
#include "platform/qt/qt_text.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QShortcut>
#include <QWindow>
#include <utility>

namespace larkspin {

namespace {

constexpr int outline = 1;      // in pixels
constexpr int keyboardWay = 12; // by which a key moves the window

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

WindowView::WindowView(const Hand& hand)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint), hand_(hand), window_(hand.window()),
      mover_(window_, *this), inside_(this) {
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
    // Size and contents come first, so that nothing is seen of what the window held before.
    const bool appears = window_.visible && !isVisible();
    bool hasChanged = false;
    if (window_.visible) {
        hasChanged = refreshFrame();
        for (const auto& control : controls_)
            control->refresh(logicalDpiX());
        hasChanged = mover_.refresh(appears || areOtherScreens) || hasChanged;
    }
    if (window_.visible != isVisible()) {
        hasChanged = true;
        setWindowState(windowState() & ~Qt::WindowMinimized);
        setVisible(window_.visible);
        if (comesBack && window_.visible)
            stayOnTopAgain();
    }
    if (window_.visible && (appears || isCalled)) {
        hasChanged = true;
        raise();
        raiseDialogs();
    }
    return hasChanged;
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
        window_.minimized = isMinimized();
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
