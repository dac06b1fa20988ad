#include "platform/qt/room/transcript.h"

#include "platform/qt/looks.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/room/said_text.h"
#include "text/utf8.h"
#include "text/visible.h"

#include <QAbstractTextDocumentLayout>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextOption>
#include <utility>

namespace larkspin {

namespace {

constexpr int documentMargin = 6; // in pixels, as those below
constexpr int hangingIndent = 18; // of the lines after the first one
constexpr int betweenLines = 3;
constexpr std::string_view cutMark = "\u2026";

QTextBlockFormat lineFormat() {
    QTextBlockFormat format;
    format.setLeftMargin(hangingIndent);
    format.setTextIndent(-hangingIndent);
    format.setTopMargin(betweenLines);
    return format;
}

std::string shortened(const std::string& text) {
    const std::size_t length = prefixLength(text, Transcript::mostCharacters);
    return length == text.size() ? text : text.substr(0, length).append(cutMark);
}

} // namespace

Transcript::Transcript() {
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    // Names stand on the left, whatever script they are written in.
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setTextDirection(Qt::LeftToRight);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document()->setDefaultTextOption(option);
    document()->setDocumentMargin(documentMargin);
    plain_.setForeground(palette().color(QPalette::Text));
    name_ = plain_;
    name_.setFontWeight(QFont::Bold);
    dim_.setForeground(between(palette().color(QPalette::Text), Qt::black, 0.35));
}

void Transcript::say(const std::string& speaker, const std::string& line,
                     const std::string& stamp) {
    keep({.speaker = shortened(speaker), .text = shortened(line), .stamp = stamp});
}

void Transcript::tell(const std::string& text, const std::string& stamp) {
    keep({.speaker = {}, .text = shortened(text), .stamp = stamp});
}

void Transcript::begin() {
    waiting_.clear();
    beginsAnew_ = true;
}

void Transcript::keep(Entry entry) {
    waiting_.push_back(std::move(entry));
    if (waiting_.size() > std::size_t{mostLines})
        waiting_.pop_front();
}

bool Transcript::showNew() {
    if (waiting_.empty())
        return false;
    // The view follows what is said, unless the owner has scrolled up to read.
    const bool follows = beginsAnew_ || isAtEnd();
    const int scrolledTo = verticalScrollBar()->value();
    if (std::exchange(beginsAnew_, false))
        clear();
    // Laid out once, however many they are.
    QTextCursor all(document());
    all.beginEditBlock();
    for (const Entry& entry : std::exchange(waiting_, {}))
        append(entry);
    all.endEditBlock();
    const int dropped = dropOldest();
    QScrollBar& bar = *verticalScrollBar();
    bar.setValue(follows ? bar.maximum() : scrolledTo - dropped);
    return true;
}

void Transcript::append(const Entry& entry) {
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    // An empty document has one block already.
    if (document()->isEmpty())
        cursor.setBlockFormat(lineFormat());
    else
        cursor.insertBlock(lineFormat());
    if (!entry.stamp.empty())
        cursor.insertText(toQt(entry.stamp) + ' ', dim_);
    if (entry.speaker.empty()) {
        cursor.insertText(toQt(visibleText(entry.text, " ")), dim_);
    } else {
        insertName(cursor, entry.speaker, name_);
        cursor.insertText(": ", name_);
        insertSaid(cursor, entry.text, plain_);
    }
}

int Transcript::dropOldest() {
    const int tooMany = document()->blockCount() - mostLines;
    if (tooMany < 1)
        return 0;
    const QTextBlock first = document()->findBlockByNumber(tooMany);
    // How much text disappears above the oldest line that stays, so that the view can be moved by
    // that.
    const double before = document()->documentLayout()->blockBoundingRect(first).top();
    QTextCursor cursor(document());
    cursor.setPosition(first.position(), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    return qRound(before -
                  document()->documentLayout()->blockBoundingRect(document()->firstBlock()).top());
}

bool Transcript::isAtEnd() const {
    return verticalScrollBar()->value() >= verticalScrollBar()->maximum();
}

void Transcript::resizeEvent(QResizeEvent* event) {
    const bool follows = isAtEnd();
    QTextEdit::resizeEvent(event);
    if (follows)
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

void Transcript::scrollPage(int pages) {
    QScrollBar& bar = *verticalScrollBar();
    bar.setValue(bar.value() + pages * bar.pageStep());
}

} // namespace larkspin
