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

} // namespace

ConversationView::ConversationView(EventLoop& loop, const ShownRoom& room,
                                   const Conversations& conversations)
    : loop_(loop), room_(room), conversations_(conversations), newLines_(conversations),
      reading_(conversations, loop), said_(*new Transcript), name_(*new QLabel),
      topic_(*new CutLabel("topic")), newBelow_(*new QPushButton(this)) {
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
                                reading_.goToEnd(front);
                            const int least = isAgain ? conversations_.again().lines : 0;
                            reading_.markUnread(front);
                            fill(front, static_cast<std::size_t>(least));
                        },
                    .leftOut = [](int) {},
                    .line = [&](const KeptLine& line) { take(line, shown); },
                    .elsewhere =
                        [&](const Conversation& conversation, const KeptLine& line) {
                            ShownLine passed = reading_.pass(conversation, line);
                            if (isWhole_)
                                said_.add(std::move(passed));
                        }});
    if (!std::exchange(isFilled_, true)) {
        leave();
        if (!std::exchange(keepsMark_, false))
            reading_.markUnread(conversations_.front());
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
        said_.add(reading_.line(front, line));
    shownUpTo_ = std::max(shownUpTo_, line.number);
}

// How far he has read in the one that has been shown until now.
void ConversationView::leave() {
    reading_.leave(said_.reading());
}

// The last lines, or those around the one that he reads: what comes after these is added bit by
// bit, since he doesn't see it yet.
void ConversationView::fill(const Conversation& conversation, std::size_t least) {
    const Reading::Spot spot = reading_.enter(conversation);
    const std::size_t size = conversation.lines().size();
    std::size_t first = size - std::min(size, std::max(firstLines, least)), end = size;
    if (!spot.follows) {
        const std::size_t read = indexOf(conversation, spot.line);
        first = std::min(first, read - std::min(read, aboveReading));
        end = std::min(size, read + belowReading);
    }
    said_.begin(spot);
    addLines(conversation, first, end);
}

void ConversationView::addLines(const Conversation& conversation, std::size_t first,
                                std::size_t end) {
    const auto& lines = conversation.lines();
    for (ShownLine& line : reading_.lines(conversation, first, end))
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
    if (isWhole_ || &front != reading_.shown())
        return;
    const auto& lines = front.lines();
    const auto last = std::ranges::find(lines, lastShown_, &KeptLine::number);
    const auto index = static_cast<std::size_t>(last - lines.begin());
    if (index < lines.size())
        addLines(front, index + 1, std::min(lines.size() - index - 1, most) + index + 1);
    else
        refill(); // what he reads is kept no longer
}

void ConversationView::stamp(bool stamps) {
    if (reading_.stamp(stamps))
        redraw();
}

void ConversationView::colorNames(bool colors) {
    if (reading_.colorNames(colors))
        redraw();
}

void ConversationView::toEnd() {
    if (!isWhole_) {
        reading_.goToEnd(conversations_.front());
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
    if (first == 0 || &front != reading_.shown())
        return;
    const auto& lines = front.lines();
    const auto found = std::ranges::find(lines, first, &KeptLine::number);
    const auto end = static_cast<std::size_t>(found - lines.begin());
    if (end == 0 || end == lines.size())
        return;
    said_.addAbove(reading_.lines(front, end - std::min(end, olderLines), end));
}

// Those below what is in view.
void ConversationView::countNew() {
    if (said_.isAtEnd() && isWhole_)
        reading_.see(shownUpTo_);
    const int count = reading_.countBelow();
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
