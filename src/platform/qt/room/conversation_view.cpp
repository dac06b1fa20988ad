#include "platform/qt/room/conversation_view.h"

#include "host/conversations.h"
#include "host/shown_room.h"
#include "platform/qt/looks.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/room/bar_parts.h"
#include "text/number.h"
#include "text/visible.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t firstLines = 300; // of a conversation that comes in front
constexpr std::size_t olderLines = 300; // more of them whenever the first one is in view
constexpr std::size_t aboveReading = 50, belowReading = 300; // lines, of the one that is read
constexpr int headGap = 10, underButton = 8;                 // in pixels

// The index of the first line with that number or a newer one.
std::size_t indexOf(const Conversation& conversation, std::uint64_t number) {
    const auto& lines = conversation.lines();
    const auto found = std::ranges::find_if(
        lines, [number](const KeptLine& line) { return line.number >= number; });
    return static_cast<std::size_t>(found - lines.begin());
}

} // namespace

ConversationView::ConversationView(EventLoop& loop, const ShownRoom& room,
                                   const Conversations& conversations)
    : loop_(loop), room_(room), conversations_(conversations), newLines_(conversations),
      said_(*new Transcript), name_(*new QLabel), topic_(*new CutLabel("topic")),
      newBelow_(*new QPushButton(this)), shown_(conversations.front().place()) {
    layOut();
    connect(said_.verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { scrolled(); });
    connect(&newBelow_, &QPushButton::clicked, this, [this] { toEnd(); });
}

void ConversationView::layOut() {
    auto* const head = new QHBoxLayout;
    head->setSpacing(headGap);
    head->addWidget(&name_);
    head->addWidget(&topic_, 1);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(underHead);
    column->addLayout(head);
    column->addWidget(&said_, 1);
    name_.setTextFormat(Qt::PlainText);
    QFont bold = name_.font();
    bold.setBold(true);
    name_.setFont(bold);
    // What stands in it never makes the window wider.
    topic_.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    said_.setAccessibleName("what is said");
    newBelow_.setFocusPolicy(Qt::TabFocus); // the owner goes on typing
    newBelow_.hide();
}

ConversationView::Shown ConversationView::showNew() {
    Shown shown;
    newLines_.take({.entered =
                        [&](const Conversation& front, bool isAgain) {
                            shown.isOther = true;
                            leave();
                            if (isAgain)
                                left_[front.place()] = {};
                            const int least = isAgain ? conversations_.again().lines : 0;
                            setMark(front);
                            fill(front, static_cast<std::size_t>(least));
                        },
                    .leftOut = [](int) {},
                    .line = [&](const KeptLine& line) { take(line, shown); },
                    .elsewhere =
                        [&](const Conversation& conversation, const KeptLine& line) {
                            takePassed({line.number, line.at,
                                        wordsFromElsewhere(conversations_, conversation, line)});
                        }});
    if (!std::exchange(isFilled_, true)) {
        leave();
        if (!std::exchange(keepsMark_, false))
            setMark(conversations_.front());
        fill(conversations_.front(), 0);
    }
    isShowing_ = true; // in the middle of it the view is scrolled about
    shown.isAny = said_.showNew();
    isShowing_ = false;
    if (shown.isAny)
        scrolled();
    return shown;
}

void ConversationView::take(const KeptLine& line, Shown& shown) {
    shown.hasNews |= line.isProgramsWord();
    if (line.number <= shownUpTo_ || !isWhole_)
        return;
    const Conversation& front = conversations_.front();
    // One that was put in among others isn't shown at the end.
    if (line.isOld && front.lastPutIn() > shownUpTo_)
        refill();
    else if (isFilled_)
        said_.add(shownLine(front, line));
    shownUpTo_ = std::max(shownUpTo_, line.number);
}

void ConversationView::takePassed(PassedLine line) {
    if (isWhole_)
        said_.add(shownLine(line));
    passed_.keep(conversations_.front(), std::move(line));
}

// How far he has read in the one that has been shown until now.
void ConversationView::leave() {
    left_[shown_] = {said_.reading(), seenUpTo_};
    std::erase_if(left_, [this](const auto& left) { return !conversations_.find(left.first); });
    passed_.dropGone(conversations_);
}

void ConversationView::setMark(const Conversation& conversation) {
    const auto& lines = conversation.lines();
    const std::size_t unread = conversation.firstUnread();
    mark_ = unread < lines.size() ? lines[unread].number : 0;
}

// The last lines, or those around the one that he reads: what comes after these is added bit by
// bit, since he doesn't see it yet.
void ConversationView::fill(const Conversation& conversation, std::size_t least) {
    shown_ = conversation.place();
    const Left left = left_[shown_];
    const std::size_t size = conversation.lines().size();
    std::size_t first = size - std::min(size, std::max(firstLines, least)), end = size;
    if (!left.reading.follows) {
        const std::size_t read = indexOf(conversation, left.reading.line);
        first = std::min(first, read - std::min(read, aboveReading));
        end = std::min(size, read + belowReading);
    }
    said_.begin(left.reading);
    addLines(conversation, first, end);
    seenUpTo_ = left.seenUpTo;
}

void ConversationView::addLines(const Conversation& conversation, std::size_t first,
                                std::size_t end) {
    const auto& lines = conversation.lines();
    for (Transcript::Line& line : shownLines(conversation, first, end))
        said_.add(std::move(line));
    if (first < end)
        lastShown_ = lines[end - 1].number;
    shownUpTo_ = conversations_.lastNumber();
    isWhole_ = end == lines.size();
    if (!isWhole_)
        loop_.post([view = QPointer(this)] {
            if (view)
                view->addRest(belowReading);
        });
}

void ConversationView::addRest(std::size_t most) {
    const Conversation& front = conversations_.front();
    if (isWhole_ || front.place() != shown_)
        return;
    const auto& lines = front.lines();
    const auto last = std::ranges::find(lines, lastShown_, &KeptLine::number);
    const auto index = static_cast<std::size_t>(last - lines.begin());
    if (index < lines.size())
        addLines(front, index + 1, std::min(lines.size() - index - 1, most) + index + 1);
    else
        refill(); // what he reads is kept no longer
}

// With those that were shown among them.
std::vector<Transcript::Line> ConversationView::shownLines(const Conversation& conversation,
                                                           std::size_t first,
                                                           std::size_t end) const {
    std::vector<Transcript::Line> all;
    const auto passed = passed_.among(conversation, first, end);
    auto next = passed.begin();
    const auto addPassed = [&](std::size_t before) {
        for (; next != passed.end() && next->before == before; ++next)
            all.push_back(shownLine(next->line));
    };
    for (std::size_t index = first; index < end; ++index) {
        const KeptLine& line = conversation.lines()[index];
        addPassed(index);
        if (line.number == mark_)
            all.push_back({.look = Transcript::Line::Look::mark, .text = "unread"});
        all.push_back(shownLine(conversation, line));
    }
    addPassed(end);
    return all;
}

Transcript::Line ConversationView::shownLine(const PassedLine& line) const {
    return {.look = Transcript::Line::Look::passed,
            .text = line.words,
            .stamp = stampOf({.at = line.at})};
}

Transcript::Line ConversationView::shownLine(const Conversation& conversation,
                                             const KeptLine& line) const {
    using Look = Transcript::Line::Look;
    const bool isSaid = line.kind == KeptLine::Kind::said;
    // What somebody does is as much for all to read as what he says.
    const bool isBright =
        line.kind == KeptLine::Kind::done ||
        (conversation.kind() == Conversation::Kind::person && !line.isProgramsWord());
    return {.look = isSaid     ? Look::said
                    : isBright ? Look::passed
                               : Look::told,
            .speaker = isSaid ? line.speaker : "",
            .text = isSaid ? line.text : wordsOf(line),
            .stamp = stampOf(line),
            .callsOwner = conversation.calls(line),
            .number = line.number};
}

std::string ConversationView::stampOf(const KeptLine& line) const {
    return stamps_ ? larkspin::stampOf(line, loop_) : "";
}

void ConversationView::stamp(bool stamps) {
    if (std::exchange(stamps_, stamps) != stamps)
        redraw();
}

void ConversationView::toEnd() {
    if (!isWhole_) {
        left_[shown_] = {};
        fill(conversations_.front(), 0);
        return;
    }
    said_.toEnd();
    scrolled();
}

void ConversationView::scrolled() {
    if (isShowing_)
        return;
    countNew();
    const bool isAtTop = said_.verticalScrollBar()->value() == 0 && !said_.isAtEnd();
    if (!isAtTop || std::exchange(isAddingOlder_, true))
        return;
    loop_.post([view = QPointer(this)] {
        if (view)
            view->addOlder();
    });
}

void ConversationView::addOlder() {
    isAddingOlder_ = false;
    const Conversation& front = conversations_.front();
    const std::uint64_t first = said_.firstLine();
    if (first == 0 || front.place() != shown_)
        return;
    const auto& lines = front.lines();
    const auto found = std::ranges::find(lines, first, &KeptLine::number);
    const auto end = static_cast<std::size_t>(found - lines.begin());
    if (end == 0 || end == lines.size())
        return;
    said_.addAbove(shownLines(front, end - std::min(end, olderLines), end));
}

// Those below what is in view.
void ConversationView::countNew() {
    if (said_.isAtEnd() && isWhole_)
        seenUpTo_ = shownUpTo_;
    const Conversation* const shown = conversations_.find(shown_);
    const int count = shown ? shown->linesAfter(seenUpTo_) : 0;
    newBelow_.setVisible(count > 0);
    if (count == 0)
        return;
    newBelow_.setText(toQt(counted(count, "new line") + " \u2193"));
    newBelow_.setAccessibleName(toQt(counted(count, "new line")));
    placeButton();
}

void ConversationView::placeButton() {
    newBelow_.adjustSize();
    const QRect above = said_.geometry();
    newBelow_.move(above.center().x() - newBelow_.width() / 2,
                   above.bottom() - newBelow_.height() - underButton);
    newBelow_.raise();
}

void ConversationView::showRoom() {
    const Conversation& front = conversations_.front();
    const std::string name =
        front.isAtHome() ? visibleName(room_.name()) : conversations_.fullName(front);
    name_.setText(toQt(name));
    const QString topic = toQt(visibleText(room_.roomTopic(), " "));
    topic_.setAccessibleName(topic.isEmpty() ? QString() : "topic: " + topic);
    topic_.showText(topic, false);
}

void ConversationView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    placeButton();
}

} // namespace larkspin
