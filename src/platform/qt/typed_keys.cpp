#include "platform/qt/typed_keys.h"

#include "platform/qt/keys.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <memory>
#include <utility>

namespace larkspin {

namespace {

// Boxes, dialogs and menus are there to be answered by keys.
bool isWindowOfOurs(const QWidget& widget) {
    const Qt::WindowType type = widget.window()->windowType();
    return type == Qt::Window || type == Qt::Tool;
}

bool takesText(const QWidget& widget) {
    const bool isField = widget.inputMethodQuery(Qt::ImEnabled).toBool();
    return (isField && !widget.property("readOnly").toBool()) ||
           qobject_cast<const QMenuBar*>(&widget) != nullptr;
}

bool isTab(int key) {
    return key == Qt::Key_Tab || key == Qt::Key_Backtab;
}

bool isText(const QKeyEvent& key) {
    const auto others = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    return !(key.modifiers() & others) && !key.text().isEmpty() && key.text()[0].isPrint();
}

} // namespace

TypedKeys::TypedKeys(Line line) : line_(std::move(line)) {
    qApp->installEventFilter(this);
}

bool TypedKeys::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        reached_ = nullptr;
        return false;
    case QEvent::FocusIn: {
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        const bool isByKeys = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                              reason == Qt::ShortcutFocusReason;
        if (isByKeys && watched->isWidgetType()) // others hear of it as well
            reached_ = watched;
        return false;
    }
    case QEvent::KeyPress:
        // It comes to the widget that has the keyboard first, and then to those around it.
        return watched->isWidgetType() && watched == QApplication::focusWidget() &&
               struck(static_cast<QWidget&>(*watched), static_cast<QKeyEvent&>(*event));
    case QEvent::InputMethodQuery:
        return isMeantForLine(*watched) && QCoreApplication::sendEvent(&line_.widget, event);
    case QEvent::InputMethod:
        if (!isMeantForLine(*watched))
            return false;
        composed(static_cast<QInputMethodEvent&>(*event));
        return true;
    default:
        return false;
    }
}

bool TypedKeys::isMeantForLine(const QObject& watched) const {
    if (!watched.isWidgetType())
        return false;
    const auto& widget = static_cast<const QWidget&>(watched);
    return isWindowOfOurs(widget) && !takesText(widget);
}

// While it is being put together the keyboard stays, since the input method would begin anew.
void TypedKeys::composed(const QInputMethodEvent& event) {
    const std::unique_ptr<QInputMethodEvent> copy(event.clone());
    if (!event.commitString().isEmpty())
        line_.comesForward();
    QCoreApplication::sendEvent(&line_.widget, copy.get());
}

// Whether nobody else is to hear of the key.
bool TypedKeys::struck(QWidget& widget, const QKeyEvent& key) {
    if (!isWindowOfOurs(widget))
        return false;
    const bool isField = takesText(widget);
    // In a window with one button Tab leads nowhere else. While the owner types text, what Tab once
    // led to is forgotten.
    if (isTab(key.key()) && !isField)
        reached_ = &widget;
    else if (isText(key) && key.key() != Qt::Key_Space)
        reached_ = nullptr;
    const Goes way = isField ? Goes::asEver : wayOf(widget, key);
    if (way != Goes::toLine)
        return way == Goes::nowhere;
    const std::unique_ptr<QKeyEvent> copy(key.clone());
    line_.comesForward();
    QCoreApplication::sendEvent(&line_.widget, copy.get());
    return true;
}

TypedKeys::Goes TypedKeys::wayOf(const QWidget& widget, const QKeyEvent& key) const {
    const bool isSpace = key.key() == Qt::Key_Space;
    if ((isText(key) && !isSpace) || key.matches(QKeySequence::Paste))
        return Goes::toLine;
    const bool isEnd = isReturn(key.key());
    const bool isTyping = isText(key) || isEnd || key.key() == Qt::Key_Backspace;
    if (!isTyping || reached_ == &widget)
        return Goes::asEver;
    const bool isList = qobject_cast<const QAbstractItemView*>(&widget) != nullptr;
    if (line_.isBegun() && !(isEnd && isList))
        return Goes::toLine;
    const bool isButton = qobject_cast<const QAbstractButton*>(&widget) != nullptr;
    return isButton && (isSpace || isEnd) ? Goes::nowhere : Goes::asEver;
}

} // namespace larkspin
