#include "platform/qt/room/input_line.h"

#include "host/line_history.h"
#include "platform/qt/keys.h"
#include "platform/qt/qt_text.h"

#include <QApplication>
#include <QKeyEvent>
#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr int mostPasted = 200'000; // characters that are looked at
constexpr auto mostTyped = static_cast<qsizetype>(LineHistory::mostCharacters);

bool isLineBreak(QChar character) {
    return character == u'\n' || character == u'\r' || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

} // namespace

InputLine::InputLine(LineHistory& history)
    : history_(history), offers_(
                             *this, [this](const auto& choice) { take(choice); },
                             [this](auto lines) { say(std::move(lines)); }) {
    setMaxLength(mostPasted);
    // What is typed stays as it is typed.
    setInputMethodHints(Qt::ImhNoAutoUppercase | Qt::ImhNoPredictiveText);
    connect(this, &QLineEdit::textChanged, this, [this] {
        if (takesPaste())
            return;
        before_ = text();
        cursorBefore_ = cursorPosition();
        noteBegin();
    });
    connect(this, &QLineEdit::cursorPositionChanged, this,
            [this] { cursorBefore_ = cursorPosition(); });
    connect(this, &QLineEdit::textEdited, this, [this] { narrow(); });
}

void InputLine::noteBegin() {
    const bool begins = !text().isEmpty();
    if (!std::exchange(isBegun_, begins) && begins)
        onBegin_();
}

void InputLine::empty() {
    back_ = 0;
    offers_.close();
    clear();
}

Draft InputLine::draft() const {
    if (hides())
        return {};
    return {.text = text().toStdString(), .cursor = static_cast<std::size_t>(cursorPosition())};
}

// Empty in between, so that the line counts as begun anew.
void InputLine::put(const Draft& draft) {
    if (hides())
        return;
    empty();
    become(QString::fromStdString(draft.text), static_cast<qsizetype>(draft.cursor));
}

// setText() leaves nothing for undo to bring back, and so to show.
void InputLine::forget() {
    setText({});
}

void InputLine::takeSecret(Secret secret) {
    // The text typed while the line was held may be the secret already.
    if (!isHeld_)
        dropSecret();
    offers_.close();
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
        const bool isTab = key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab;
        if (isTab && offers_.takesKey(key))
            return true;
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
    if (offers_.takesKey(*event))
        return;
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End:
        offers_.close();
        QLineEdit::keyPressEvent(event);
        return;
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

void InputLine::focusOutEvent(QFocusEvent* event) {
    if (offers_.isOffering())
        offers_.close();
    QLineEdit::focusOutEvent(event);
}

void InputLine::moveEvent(QMoveEvent* event) {
    QLineEdit::moveEvent(event);
    offers_.place();
}

void InputLine::resizeEvent(QResizeEvent* event) {
    QLineEdit::resizeEvent(event);
    offers_.place();
}

void InputLine::become(const QString& line, qsizetype cursor) {
    setText(line);
    setCursorPosition(static_cast<int>(cursor));
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
    PastedLines pasted = pastedLines(line.toStdString(), LineHistory::mostCharacters);
    if (pasted.lines.size() > 1 && !hides()) {
        askAbout(std::move(pasted));
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

// The line stands as it was until he has answered. What follows a line that asks for a password may
// be that password, which isn't shown.
void InputLine::askAbout(PastedLines pasted) {
    const auto asks = std::find_if(pasted.lines.begin(), pasted.lines.end(), holdsAfter_);
    if (asks != pasted.lines.end())
        pasted.lines.erase(asks + 1, pasted.lines.end());
    const QString before = before_;
    become(before, cursorBefore_);
    if (before.isEmpty())
        onBegin_();
    offers_.ask(std::move(pasted));
}

void InputLine::say(std::vector<std::string> lines) {
    empty();
    for (std::string& line : lines)
        handOn(std::move(line));
}

void InputLine::endLine() {
    std::string line = text().toStdString();
    if (line.empty())
        return;
    empty();
    handOn(std::move(line));
}

void InputLine::handOn(std::string line) {
    const std::string shown = masked_(line);
    history_.add(shown);
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
    offers_.close();
    setText(back_ == 0 ? begun_ : toQt(*(lines.end() - back_)));
}

Completion InputLine::completion() const {
    return complete_(text().left(cursorPosition()).toStdString());
}

// What is still open after what is certain has been added stands above the line.
void InputLine::complete() {
    Completion found = completion();
    if (found.text.empty() || !replace(found.replaced, found.text)) {
        QApplication::beep();
        offers_.close();
        return;
    }
    if (!found.addsNothing && found.choices.size() > 1)
        found = completion();
    if (found.choices.size() < 2)
        return offers_.close();
    replaced_ = found.replaced;
    offers_.offer(found);
}

// The choices follow what is typed, until it is one of them.
void InputLine::narrow() {
    if (!offers_.isOffering())
        return;
    const Completion found = cursorPosition() > 0 ? completion() : Completion();
    const bool isThere =
        found.choices.size() == 1 && text().left(cursorPosition()).endsWith(toQt(found.text));
    if (found.choices.empty() || isThere)
        return offers_.close();
    replaced_ = found.replaced;
    offers_.offer(found);
}

void InputLine::take(const Completion::Choice& choice) {
    if (!replace(replaced_, choice.text))
        QApplication::beep();
}

// Puts a text in the place of some characters in front of the cursor. A completion counts
// characters. Qt counts UTF-16 units, of which some characters take two.
bool InputLine::replace(std::size_t characters, const std::string& replacement) {
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

} // namespace larkspin
