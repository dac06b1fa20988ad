#include "platform/qt/room/transcript.h"

#include "platform/qt/looks.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/room/said_text.h"
#include "text/visible.h"

#include <QAbstractTextDocumentLayout>
#include <QHelpEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <QTextOption>
#include <QToolTip>
#include <utility>

namespace larkspin {

namespace {

constexpr int documentMargin = 6; // in pixels, as those below
constexpr int hangingIndent = 18; // of the lines after the first one
constexpr int betweenLines = 3;
constexpr int besideMark = 8;
constexpr int markState = -2; // of a block; a line's is its number, -1 is that of any other

constexpr double callGround = 0.16; // the share of its colour

int stateOf(const Transcript::Line& line) {
    if (line.look == Transcript::Line::Look::mark)
        return markState;
    return line.number == 0 ? -1 : static_cast<int>(line.number & 0x7FFFFFFF);
}

// Qt would begin a new row after a slash, also in a list of words that begin with one.
constexpr QChar wordJoiner(0x2060);

QString withWholeWords(QString told) {
    static const QRegularExpression neighbours(" /\\w+ /\\w+");
    return told.contains(neighbours) ? told.replace(" /", QString(" /") + wordJoiner) : told;
}

// The joiners come out of another font, which isn't to make their row higher.
void insertTold(QTextCursor& cursor, const QString& text, const QTextCharFormat& format) {
    QTextCharFormat small = format;
    small.setFontPointSize(1);
    const QStringList parts = text.split(wordJoiner);
    cursor.insertText(parts.first(), format);
    for (const QString& part : parts.sliced(1)) {
        cursor.insertText(wordJoiner, small);
        cursor.insertText(part, format);
    }
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
    viewport()->setMouseTracking(true); // links show that they can be clicked
    takeColors();
}

void Transcript::takeColors() {
    const QColor front = palette().color(QPalette::Text), ground = palette().color(QPalette::Base);
    plain_.setForeground(front);
    name_ = plain_;
    name_.setFontWeight(QFont::Bold);
    dim_.setForeground(dimText(front, ground));
    call_ = name_;
    call_.setForeground(readable(callColor, ground));
    mark_.setForeground(call_.foreground());
}

// The colours of what stands there already are its formats': whoever fills it does so anew.
void Transcript::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange)
        takeColors();
    keepingPlace([&] { QTextEdit::changeEvent(event); });
}

void Transcript::add(Line line) {
    waiting_.push_back(std::move(line));
    if (waiting_.size() > std::size_t{mostLines})
        waiting_.pop_front();
}

void Transcript::begin(const Spot& spot) {
    waiting_.clear();
    beginsAnew_ = true;
    beginsAt_ = spot;
}

bool Transcript::showNew() {
    if (waiting_.empty() && !beginsAnew_)
        return false;
    // The view follows what is said, unless the owner has scrolled up to read.
    const bool begins = std::exchange(beginsAnew_, false), follows = !begins && isAtEnd();
    const int scrolledTo = verticalScrollBar()->value();
    if (begins)
        clear();
    // Laid out once, however many they are.
    QTextCursor all(document());
    all.beginEditBlock();
    bool isFirst = document()->isEmpty(); // an empty document has one block already
    for (const Line& line : std::exchange(waiting_, {})) {
        all.movePosition(QTextCursor::End);
        append(all, line, std::exchange(isFirst, false));
    }
    all.endEditBlock();
    const int dropped = dropOldest(follows || begins ? mostLines : mostReadBack);
    if (begins)
        read(beginsAt_);
    else if (follows)
        toEnd();
    else
        verticalScrollBar()->setValue(scrolledTo - dropped);
    return true;
}

QTextBlockFormat Transcript::blockOf(const Line& line) const {
    QTextBlockFormat format;
    format.setTopMargin(betweenLines);
    if (line.look == Line::Look::mark) {
        format.setAlignment(Qt::AlignHCenter);
        return format;
    }
    format.setLeftMargin(hangingIndent);
    format.setTextIndent(-hangingIndent);
    if (line.callsOwner)
        format.setBackground(
            between(palette().color(QPalette::Base), call_.foreground().color(), callGround));
    return format;
}

void Transcript::append(QTextCursor& cursor, const Line& line, bool isFirst) {
    if (isFirst)
        cursor.setBlockFormat(blockOf(line));
    else
        cursor.insertBlock(blockOf(line));
    insert(cursor, line);
}

void Transcript::insert(QTextCursor& cursor, const Line& line) {
    using Look = Line::Look;
    cursor.block().setUserState(stateOf(line));
    if (!line.stamp.empty())
        cursor.insertText(toQt(line.stamp) + ' ', dim_);
    if (line.look == Look::said) {
        QTextCharFormat name = line.callsOwner ? call_ : name_;
        if (line.nameColor && !line.callsOwner)
            name.setForeground(
                readable(QColor(QRgb{*line.nameColor}), palette().color(QPalette::Base)));
        insertName(cursor, line.speaker, name);
        cursor.insertText(": ", name);
        const int from = cursor.position();
        linkSaid(cursor, from,
                 insertSaid(cursor, line.text, plain_, palette().color(QPalette::Base)));
    } else {
        const int from = cursor.position();
        const QString seen = withWholeWords(toQt(visibleText(line.text, " ")));
        insertTold(cursor, seen, line.look == Look::mark ? mark_ : line.isBright() ? plain_ : dim_);
        linkSaid(cursor, from, seen.toStdString());
    }
}

void Transcript::addAbove(const std::vector<Line>& lines) {
    const Spot spot = reading();
    QTextCursor above(document());
    above.beginEditBlock();
    for (const Line& line : lines) {
        // A block is put in before the first one, which keeps its own format and state.
        const QTextBlock first = above.block();
        const QTextBlockFormat format = first.blockFormat();
        const int state = first.userState();
        above.insertBlock(format);
        above.block().setUserState(state);
        above.movePosition(QTextCursor::PreviousBlock);
        above.setBlockFormat(blockOf(line));
        insert(above, line);
        above.movePosition(QTextCursor::NextBlock);
    }
    above.endEditBlock();
    read(spot);
}

std::uint64_t Transcript::firstLine() const {
    for (QTextBlock block = document()->firstBlock(); block.isValid(); block = block.next())
        if (block.userState() > 0)
            return static_cast<std::uint64_t>(block.userState());
    return 0;
}

int Transcript::dropOldest(int most) {
    const int tooMany = document()->blockCount() - most;
    if (tooMany < 1)
        return 0;
    const QTextBlock first = document()->findBlockByNumber(tooMany);
    // How much text disappears above the oldest line that stays, so that the view can be moved by
    // that.
    const int before = topOf(first);
    QTextCursor cursor(document());
    cursor.setPosition(first.position(), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    return before - topOf(document()->firstBlock());
}

int Transcript::topOf(const QTextBlock& block) const {
    return qRound(document()->documentLayout()->blockBoundingRect(block).top());
}

bool Transcript::isAtEnd() const {
    return verticalScrollBar()->value() >= verticalScrollBar()->maximum();
}

void Transcript::toEnd() {
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

Transcript::Spot Transcript::reading() const {
    if (isAtEnd())
        return {};
    const int top = verticalScrollBar()->value();
    QTextBlock block = cursorForPosition({hangingIndent + documentMargin, 0}).block();
    while (block.isValid() && block.userState() <= 0)
        block = block.next();
    if (!block.isValid())
        return {};
    return {false, static_cast<std::uint64_t>(block.userState()), top - topOf(block)};
}

// A line that isn't held any more was before all that are.
void Transcript::read(const Spot& spot) {
    if (spot.follows)
        return toEnd();
    QTextBlock block = document()->firstBlock();
    while (block.isValid() && block.userState() != static_cast<int>(spot.line & 0x7FFFFFFF))
        block = block.next();
    verticalScrollBar()->setValue(block.isValid() ? topOf(block) + spot.above : 0);
}

// What breaks the lines elsewhere leaves the one at the upper edge there.
void Transcript::keepingPlace(const std::function<void()>& change) {
    const Spot place = reading();
    change();
    read(place);
}

void Transcript::resizeEvent(QResizeEvent* event) {
    keepingPlace([&] { QTextEdit::resizeEvent(event); });
}

// A mark has a line on either side.
void Transcript::paintEvent(QPaintEvent* event) {
    QTextEdit::paintEvent(event);
    const int scrolledTo = verticalScrollBar()->value(), height = viewport()->height();
    QTextBlock block = cursorForPosition({0, 0}).block();
    QPainter painter(viewport());
    for (; block.isValid() && topOf(block) - scrolledTo < height; block = block.next()) {
        if (block.userState() != markState || block.layout()->lineCount() == 0)
            continue;
        const QRectF text = block.layout()->lineAt(0).naturalTextRect().translated(
            block.layout()->position() - QPointF(0, scrolledTo));
        const int y = qRound(text.center().y()), left = qRound(text.left()) - besideMark,
                  right = qRound(text.right()) + besideMark;
        painter.fillRect(QRect(documentMargin, y, left - documentMargin, 1), mark_.foreground());
        painter.fillRect(QRect(right, y, viewport()->width() - documentMargin - right, 1),
                         mark_.foreground());
    }
}

void Transcript::mousePressEvent(QMouseEvent* event) {
    pressed_ = event->button() == Qt::LeftButton ? anchorAt(event->pos()) : QString();
    QTextEdit::mousePressEvent(event);
}

void Transcript::mouseMoveEvent(QMouseEvent* event) {
    QTextEdit::mouseMoveEvent(event);
    viewport()->setCursor(anchorAt(event->pos()).isEmpty() ? Qt::IBeamCursor
                                                           : Qt::PointingHandCursor);
}

// Who marks a part of a text that has a link in it doesn't want to open that.
void Transcript::mouseReleaseEvent(QMouseEvent* event) {
    QTextEdit::mouseReleaseEvent(event);
    const QString address = std::exchange(pressed_, {});
    if (!address.isEmpty() && address == anchorAt(event->pos()) && !textCursor().hasSelection())
        opens_(address.toStdString());
}

// The address itself, which may be read as markup if it looks like some.
bool Transcript::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QTextEdit::viewportEvent(event);
    const auto& help = static_cast<const QHelpEvent&>(*event);
    const QString address = anchorAt(help.pos());
    QToolTip::showText(help.globalPos(),
                       address.isEmpty() ? QString() : "<qt>" + address.toHtmlEscaped() + "</qt>",
                       viewport());
    return true;
}

// Whoever puts what he has copied into the line gets the words as they are typed.
QMimeData* Transcript::createMimeDataFromSelection() const {
    QMimeData* const copied = QTextEdit::createMimeDataFromSelection();
    copied->setText(copied->text().remove(wordJoiner));
    copied->setHtml(copied->html().remove(wordJoiner));
    return copied;
}

void Transcript::scrollPage(int pages) {
    QScrollBar& bar = *verticalScrollBar();
    bar.setValue(bar.value() + pages * bar.pageStep());
}

} // namespace larkspin
