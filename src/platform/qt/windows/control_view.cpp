#include "platform/qt/windows/control_view.h"

#include "platform/qt/keys.h"
#include "platform/qt/looks.h"
#include "platform/qt/qt_text.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>

namespace larkspin {

ControlView::ControlView(const ViewParts& parts, const Control& control,
                         std::unique_ptr<QWidget> widget)
    : parts_(parts), name_(control.name), widget_(std::move(widget)) {
    widget_->setParent(&parts.parent);
    widget_->setObjectName(toQt(control.name));
    widget_->setFont(fontOf(control.font));
    widget_->setAccessibleName(toQt(control.spoken.empty() ? control.name : control.spoken));
    listenTo(*widget_);
}

ControlView::~ControlView() = default;

void ControlView::listenTo(QWidget& inner) {
    inner.installEventFilter(this);
    const Control* const described = control();
    // Qt is asked only for what something reacts to.
    inner.setMouseTracking(described && described->onMouseMove);
    inner.setAcceptDrops(false); // the window takes them
}

void ControlView::refresh(int dpi) {
    const Control* const described = control();
    const bool isIn = described && isOnWindow(hand().window(), *described);
    if (isIn) {
        widget_->setGeometry(pixelsOf(described->place, dpi));
        const std::pair colors(described->foreground, described->background);
        if (colors_ != colors) {
            colors_ = colors;
            dress(*described);
        }
        show(*described);
    }
    if (widget_->isHidden() == isIn) // also out of the order in which the keyboard goes through
        widget_->setVisible(isIn);
}

void ControlView::dress(const Control& control) {
    widget_->setPalette(paletteOf(control.foreground, control.background));
}

bool ControlView::pressed(const QMouseEvent&) {
    hand().does([name = name_](Window& window) { mouseDown(window, name); });
    return false;
}

bool ControlView::released(const QMouseEvent& event) {
    const bool isInside = widget_->rect().contains(event.position().toPoint());
    hand().does([name = name_, isInside](Window& window) {
        window.dragged = false;
        if (isInside)
            click(window, name);
    });
    return false;
}

// If nothing reacts to a double click, it is one more press.
bool ControlView::pressedAgain(const QMouseEvent& event) {
    const Control* const described = control();
    if (!described || !described->onDoubleClick) {
        pressed(event);
        return false;
    }
    hand().does([name = name_](Window& window) { doubleClick(window, name); });
    return true;
}

bool ControlView::strike(const QKeyEvent&) {
    return false;
}

// What reacts to a mouse-down by itself is a title label, by which a window is dragged.
bool ControlView::menuAsked(const QContextMenuEvent&) {
    if (const Control* const described = control(); !described || !described->onMouseDown)
        return false;
    hand().opensTitleMenu();
    return true;
}

bool ControlView::eventFilter(QObject*, QEvent* event) {
    const auto mouse = [event]() -> const QMouseEvent& {
        return static_cast<QMouseEvent&>(*event);
    };
    const auto isLeft = [&mouse] { return mouse().button() == Qt::LeftButton; };
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        isDoubleClicked_ = false; // the last release may have gone to another window
        if (isLeft())
            parts_.mover.grip(mouse().globalPosition().toPoint());
        return isLeft() && pressed(mouse());
    case QEvent::MouseButtonRelease:
        // After a double click it is no click, or what the double click has done would be followed
        // by what a click does.
        return isLeft() && !isDoubleClicked_ && released(mouse());
    case QEvent::MouseButtonDblClick:
        isDoubleClicked_ = isLeft() && pressedAgain(mouse());
        return isDoubleClicked_;
    case QEvent::MouseMove:
        return mouseMoved(mouse());
    case QEvent::KeyPress:
        return keyPressed(static_cast<QKeyEvent&>(*event));
    case QEvent::ContextMenu:
        return menuAsked(static_cast<QContextMenuEvent&>(*event));
    default:
        return false;
    }
}

bool ControlView::mouseMoved(const QMouseEvent& event) {
    if (event.buttons() & Qt::LeftButton)
        parts_.mover.follow(event.globalPosition().toPoint());
    else
        hover();
    return false;
}

// The mouse moves pixel by pixel. One event a turn is enough for the program.
void ControlView::hover() {
    if (std::exchange(*isHovering_, true))
        return;
    hand().passes([name = name_, isHovering = isHovering_](Window& window) {
        *isHovering = false;
        larkspin::hover(window, name);
    });
}

bool ControlView::keyPressed(const QKeyEvent& event) {
    const auto sends = [this](Key key) {
        hand().does([name = name_, key](Window& window) { pressKey(window, name, key); });
    };
    if (event.key() == Qt::Key_Escape) {
        // The control hears of Escape first, and then the window closes.
        sends(Key::escape);
        if (const Control* const described = control(); !described || !described->keepsEscape)
            hand().does([](Window& window) { closeWindow(window); });
        return true;
    }
    if (event.key() == Qt::Key_Delete)
        sends(Key::del);
    if (isReturn(event.key()))
        sends(Key::enter);
    return strike(event);
}

std::unique_ptr<ControlView> makeView(const ViewParts& parts, const Control& control) {
    switch (control.kind) {
    case Control::Kind::list:
        return makeListView(parts, control);
    case Control::Kind::textField:
        return makeTextView(parts, control);
    case Control::Kind::slider:
        return makeSliderView(parts, control);
    case Control::Kind::combo:
        return makeComboView(parts, control);
    case Control::Kind::swatch:
        return makeSwatchView(parts, control);
    default:
        return makeCaptionView(parts, control);
    }
}

} // namespace larkspin
