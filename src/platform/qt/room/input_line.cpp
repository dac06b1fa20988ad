#include "platform/qt/room/input_line.h"

#include "platform/posix/line_history.h"
#include "platform/qt/keys.h"
#include "platform/qt/qt_text.h"

#include <QApplication>
#include <QKeyEvent>
#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

bool isLineBreak(QChar character) {
    return character == u'\n' || character == u'\r' || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

} // namespace

InputLine::InputLine(LineHistory& history) : history_(history) {
    setMaxLength(static_cast<int>(LineHistory::mostCharacters));
    connect(this, &QLineEdit::textChanged, this, [this] {
        noteBegin();
        closeLineBreaks();
    });
}

void InputLine::noteBegin() {
    const bool begins = !text().isEmpty();
    if (!std::exchange(isBegun_, begins) && begins)
        onBegin_();
}

void InputLine::empty() {
    back_ = 0;
    clear();
}

InputLine::Draft InputLine::draft() const {
    return hides() ? Draft() : Draft{text(), cursorPosition()};
}

// Empty in between, so that the line counts as begun anew.
void InputLine::put(const Draft& draft) {
    if (hides())
        return;
    empty();
    setText(draft.text);
    setCursorPosition(draft.cursor);
}

// setText() leaves nothing for undo to bring back, and so to show.
void InputLine::forget() {
    setText({});
}

void InputLine::takeSecret(Secret secret) {
    // The text typed while the line was held may be the secret already.
    if (!isHeld_)
        dropSecret();
    secret_ = std::move(secret);
    isHeld_ = false;
    setEchoMode(Password);
    if (std::exchange(isSecretComplete_, false))
        endSecret(text().toStdString());
}

void InputLine::dropSecret() {
    secret_ = nullptr;
    isHeld_ = isSecretComplete_ = false;
    forget();
    setEchoMode(Normal);
    back_ = 0;
}

void InputLine::goOn() {
    if (isHeld_)
        dropSecret();
}

void InputLine::endSecret(std::string line) {
    const Secret secret = secret_;
    dropSecret();
    secret(std::move(line));
}

// Whether the key has been dealt with.
bool InputLine::takeSecretKey(int key) {
    const bool isEnd = isReturn(key);
    if (secret_ && (isEnd || key == Qt::Key_Escape))
        endSecret(isEnd ? text().toStdString() : "");
    else if (isEnd)
        isSecretComplete_ = true; // `takeSecret` hands it on
    return isSecretComplete_ || isEnd || key == Qt::Key_Escape || key == Qt::Key_Up ||
           key == Qt::Key_Down;
}

// Tab moves the focus only from an empty line, in which there is nothing to complete.
bool InputLine::event(QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (key.key() == Qt::Key_Tab && key.modifiers() == Qt::NoModifier && !text().isEmpty()) {
            if (!hides())
                complete();
            return true;
        }
    }
    return QLineEdit::event(event);
}

void InputLine::keyPressEvent(QKeyEvent* event) {
    if (hides() && takeSecretKey(event->key()))
        return;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        endLine();
        return;
    case Qt::Key_Up:
        recall(1);
        return;
    case Qt::Key_Down:
        recall(-1);
        return;
    case Qt::Key_PageUp:
        onPage_(-1);
        return;
    case Qt::Key_PageDown:
        onPage_(1);
        return;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

// A pasted line break becomes a blank and doesn't end the line, so that nothing is said before the
// owner has seen it.
void InputLine::closeLineBreaks() {
    QString line = text();
    if (std::none_of(line.cbegin(), line.cend(), isLineBreak))
        return;
    std::replace_if(line.begin(), line.end(), isLineBreak, QChar(u' '));
    const int cursor = cursorPosition();
    setText(line);
    setCursorPosition(cursor);
}

void InputLine::endLine() {
    std::string line = text().toStdString();
    if (line.empty())
        return;
    const std::string shown = masked_(line);
    history_.add(shown);
    empty();
    if (shown != line)
        forget();
    // The owner may type the secret right after this line, before anybody has asked for it.
    isHeld_ = holdsAfter_(line);
    if (isHeld_)
        setEchoMode(Password);
    onLine_(std::move(line));
}

void InputLine::recall(int way) {
    const auto& lines = history_.lines();
    const int wanted = back_ + way;
    if (wanted < 0 || wanted > static_cast<int>(lines.size()))
        return;
    // The line that was begun comes back when the owner returns from the history.
    if (back_ == 0)
        begun_ = text();
    back_ = wanted;
    setText(back_ == 0 ? begun_ : toQt(*(lines.end() - back_)));
}

// A completion counts characters. Qt counts UTF-16 units, of which some characters take two.
void InputLine::complete() {
    const auto typed = text().left(cursorPosition()).toUcs4();
    const Completion found = complete_(text().left(cursorPosition()).toStdString());
    onChoices_(found);
    const auto left = typed.size() - static_cast<qsizetype>(found.replaced);
    const QString begun = QString::fromUcs4(reinterpret_cast<const char32_t*>(typed.constData()),
                                            std::max<qsizetype>(left, 0));
    const QString before = begun + toQt(found.text);
    const QString whole = before + text().mid(cursorPosition());
    if (found.text.empty() || whole.size() > maxLength()) {
        QApplication::beep();
        return;
    }
    setText(whole);
    setCursorPosition(static_cast<int>(before.size()));
}

} // namespace larkspin
