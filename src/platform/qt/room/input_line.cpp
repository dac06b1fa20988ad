#include "platform/qt/room/input_line.h"

#include "host/line_history.h"
#include "platform/qt/qt_text.h"

#include <QApplication>
#include <QKeyEvent>
#include <algorithm>

namespace larkspin {

namespace {

constexpr int mostPasted = 200'000; // characters that are looked at
constexpr auto mostTyped = static_cast<qsizetype>(LineHistory::mostCharacters);

bool isLineBreak(QChar character) {
    return endsLine(character.unicode());
}

bool isModifier(int key) {
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt ||
           key == Qt::Key_AltGr || key == Qt::Key_Meta || key == Qt::Key_CapsLock;
}

LineKey meaningOf(const QKeyEvent& key) {
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return LineKey::enter;
    case Qt::Key_Escape:
        return LineKey::escape;
    case Qt::Key_Tab:
        return key.modifiers() == Qt::NoModifier ? LineKey::tab : LineKey::other;
    case Qt::Key_Backtab:
        return LineKey::shiftTab;
    case Qt::Key_Up:
        return LineKey::up;
    case Qt::Key_Down:
        return LineKey::down;
    case Qt::Key_PageUp:
        return LineKey::pageUp;
    case Qt::Key_PageDown:
        return LineKey::pageDown;
    default:
        return LineKey::other;
    }
}

} // namespace

InputLine::InputLine(LineHistory& history) : typing(*this, history), panels_(*this, typing.offers) {
    setMaxLength(mostPasted);
    // What is typed stays as it is typed.
    setInputMethodHints(Qt::ImhNoAutoUppercase | Qt::ImhNoPredictiveText);
    typing.onRefusal([] { QApplication::beep(); });
    typing.onHide([this](bool hides) { setEchoMode(hides ? Password : Normal); });
    connect(this, &QLineEdit::textChanged, this, [this] {
        if (takesPaste())
            return;
        before_ = text();
        cursorBefore_ = cursorPosition();
        typing.noteBegin();
    });
    connect(this, &QLineEdit::cursorPositionChanged, this,
            [this] { cursorBefore_ = cursorPosition(); });
    connect(this, &QLineEdit::textEdited, this, [this] { typing.narrow(); });
}

Draft InputLine::typed() const {
    return {text().toStdString(), static_cast<std::size_t>(cursorPosition())};
}

std::string InputLine::beforeCursor() const {
    return text().left(cursorPosition()).toStdString();
}

void InputLine::become(const Draft& draft) {
    const QString line = QString::fromStdString(draft.text);
    become(line,
           static_cast<qsizetype>(std::min(draft.cursor, static_cast<std::size_t>(line.size()))));
}

void InputLine::become(const QString& line, qsizetype cursor) {
    setText(line);
    setCursorPosition(static_cast<int>(cursor));
}

// setText() leaves nothing for undo to bring back, and so to show.
void InputLine::forget() {
    setText(text());
}

// Qt counts UTF-16 units, of which some characters take two.
bool InputLine::replaceBefore(std::size_t characters, const std::string& replacement) {
    const auto typed = text().left(cursorPosition()).toUcs4();
    const auto left = typed.size() - static_cast<qsizetype>(characters);
    const QString begun = QString::fromUcs4(reinterpret_cast<const char32_t*>(typed.constData()),
                                            std::max<qsizetype>(left, 0));
    const QString before = begun + toQt(replacement);
    const QString whole = before + text().mid(cursorPosition());
    if (whole.size() > mostTyped)
        return false;
    become(whole, before.size());
    return true;
}

// Tab moves the focus only from an empty line, in which there is nothing to complete.
bool InputLine::event(QEvent* event) {
    if (event->type() == QEvent::KeyPress && !(text().isEmpty() && typing.hides())) {
        const LineKey key = meaningOf(static_cast<const QKeyEvent&>(*event));
        const bool isTab = key == LineKey::tab || key == LineKey::shiftTab;
        if (isTab && typing.take(key))
            return true;
    }
    return QLineEdit::event(event);
}

void InputLine::keyPressEvent(QKeyEvent* event) {
    const LineKey key = meaningOf(*event);
    if (!isModifier(event->key()) && typing.take(key))
        return;
    if (key == LineKey::pageUp || key == LineKey::pageDown)
        return onPage_(key == LineKey::pageUp ? -1 : 1);
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End:
        typing.offers.close();
        break;
    default:
        break;
    }
    QLineEdit::keyPressEvent(event);
}

void InputLine::focusOutEvent(QFocusEvent* event) {
    if (typing.offers.isOffering())
        typing.offers.close();
    QLineEdit::focusOutEvent(event);
}

void InputLine::moveEvent(QMoveEvent* event) {
    QLineEdit::moveEvent(event);
    panels_.place();
}

void InputLine::resizeEvent(QResizeEvent* event) {
    QLineEdit::resizeEvent(event);
    panels_.place();
}

// Whether what has come into the line can't stand there as it is: it is too long, or has line
// breaks, and then nothing of it is said before the owner has seen it.
bool InputLine::takesPaste() {
    QString line = text();
    const bool hasBreaks = std::any_of(line.cbegin(), line.cend(), isLineBreak);
    if (!hasBreaks && line.size() <= mostTyped)
        return false;
    qsizetype cursor = cursorPosition(); // the end of what was pasted
    for (; cursor > 0 && isLineBreak(line[cursor - 1]); --cursor)
        line.remove(cursor - 1, 1);
    if (typing.asksAbout(line.toStdString())) {
        become(QString(before_), cursorBefore_);
        return true;
    }
    std::replace_if(line.begin(), line.end(), isLineBreak, QChar(u' '));
    if (const auto tooMany = std::max<qsizetype>(line.size() - mostTyped, 0); tooMany > 0) {
        line.remove(cursor - tooMany, tooMany);
        cursor -= tooMany;
    }
    become(line, cursor);
    return true;
}

} // namespace larkspin
