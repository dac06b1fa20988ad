#include "platform/terminal/room/room_view.h"

#include "platform/terminal/screen/columns.h"
#include "text/utf8.h"
#include "text/visible.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t longestOwnName = 30; // characters: a server gives names of any length
constexpr int leastForMenuHint = 40;       // columns
constexpr int leastForAllHints = 60;
constexpr std::string_view menuHint = " F10 menu ", helpHint = " F1 help ",
                           windowsHint = " F6 windows ";
constexpr int besideName = 2;

} // namespace

RoomView::RoomView(const EventLoop& loop, const ShownRoom& room, const Conversations& conversations,
                   LineHistory& history)
    : room_(room), conversations_(conversations), newLines_(conversations),
      reading_(conversations, loop), said(conversations, reading_), line(history),
      halfTyped(line.typing, conversations) {}

void RoomView::show(SongInPlay& song, SongPane::Works works) {
    song_ = &song;
    bar.emplace(std::move(works));
}

void RoomView::show(FirstSteps& firstSteps, StepsPane::TakeLine run, StepsPane::TakeLine click) {
    steps.emplace(firstSteps, std::move(run), std::move(click));
}

bool RoomView::showNew() {
    bool isOther = takeLines();
    isOther |= halfTyped.follow();
    isOther |= std::exchange(revision_, conversations_.revision()) != conversations_.revision();
    if (song_) {
        const SongView song = song_->view();
        isOther |= std::exchange(shownSong_, song) != song;
    }
    return (steps && steps->refresh()) || isOther;
}

// True if anything is new.
bool RoomView::takeLines() {
    bool isAny = false;
    newLines_.take({.entered =
                        [&](const Conversation& front, bool isAgain) {
                            isAny = true;
                            arePeopleKnown_ = false;
                            reading_.leave(said.spot());
                            if (isAgain)
                                reading_.goToEnd(front);
                            reading_.markUnread(front);
                            said.read(reading_.enter(front));
                        },
                    .leftOut = [](int) {},
                    .line =
                        [&](const KeptLine& kept) {
                            isAny = true;
                            if (kept.isProgramsWord()) // by which people come and go
                                arePeopleKnown_ = false;
                        },
                    .elsewhere =
                        [&](const Conversation& conversation, const KeptLine& kept) {
                            isAny = true;
                            reading_.pass(conversation, kept);
                        }});
    return isAny;
}

const std::vector<PeopleRow>& RoomView::people() {
    if (!std::exchange(arePeopleKnown_, true)) {
        const bool isTalk = conversations_.front().kind() == Conversation::Kind::person;
        people_ = isTalk ? std::vector<PeopleRow>() : peopleRows(room_);
    }
    return people_;
}

std::string RoomView::title() const {
    const Conversation& front = conversations_.front();
    return front.isAtHome() ? visibleName(room_.name()) : conversations_.fullName(front);
}

std::string RoomView::prompt() const {
    const std::string name = visibleName(prompt_.empty() ? room_.ownName() : prompt_);
    std::string prompt =
        prompt_.empty() ? name.substr(0, prefixLength(name, longestOwnName)) : name;
    if (const Conversation* const elsewhere = halfTyped.elsewhere())
        prompt += " in " + conversations_.fullName(*elsewhere);
    return prompt + ": ";
}

Area RoomView::middle() const {
    const Area& foot = layout_.line;
    const int top = layout_.title.bottom(),
              bottom = layout_.song.isEmpty() ? foot.top : layout_.song.top;
    return {top, 0, std::max(bottom - top, 0), foot.columns};
}

Cursor RoomView::draw(Cells& cells) {
    const std::vector<PeopleRow>& there = people();
    auto rooms = conversationRows(conversations_);
    layout_ = layOutRoom(cells.rows(), cells.columns(),
                         {.hasRooms = conversations_.all().size() > 1,
                          .hasPeople = there.size() > 1,
                          .hintRows = steps ? steps->rows() : 0});
    cells.fill(cells.area(), styles_.plain);
    said.draw(cells, layout_.said, styles_);
    peoplePane.draw(
        cells, layout_.people, there,
        [this](std::string_view name) { return room_.isIgnored(name); }, styles_);
    drawBorders(cells);
    if (steps)
        steps->draw(cells, layout_.hint, styles_);
    if (bar)
        bar->draw(cells, layout_.song, shownSong_, styles_);
    drawTitle(cells, rooms);
    roomsPane.draw(cells, layout_.rooms, std::move(rooms), styles_);
    return drawLine(cells);
}

void RoomView::drawBorders(Cells& cells) {
    const auto down = [&](int column, const Area& beside) {
        for (int row = beside.top; row < beside.bottom(); ++row)
            cells.put(row, column, column + 1, "│", styles_.border);
    };
    if (!layout_.rooms.isEmpty())
        down(layout_.rooms.right(), layout_.rooms);
    if (!layout_.people.isEmpty())
        down(layout_.people.left - 1, layout_.people);
}

// The name and the topic; at the right what is unread, where no list tells that.
void RoomView::drawTitle(Cells& cells, const std::vector<ConversationRow>& rooms) {
    const Area& at = layout_.title;
    if (at.isEmpty())
        return;
    cells.fill(at, styles_.strip);
    int right = at.right();
    if (at.columns >= leastForMenuHint) {
        right -= columnsOf(menuHint);
        cells.put(at.top, right, at.right(), menuHint, styles_.stripDim);
    }
    if (at.columns >= leastForAllHints) {
        const std::string_view hint = hasWindows() ? windowsHint : helpHint;
        right -= columnsOf(hint);
        cells.put(at.top, right, at.right(), hint, styles_.stripDim);
    }
    const std::string unread = layout_.rooms.isEmpty() ? unreadWords(rooms) : "";
    if (!unread.empty()) {
        const int width = std::min(columnsOf(unread), at.columns / 2);
        right -= width + 1;
        cells.putCut(at.top, right, right + width, unread, styles_.stripCall);
    }
    const int column = cells.putCut(at.top, at.left + 1, right, title(), styles_.stripName);
    cells.putCut(at.top, column + besideName, right, visibleText(room_.roomTopic(), " "),
                 styles_.stripDim);
}

Cursor RoomView::drawLine(Cells& cells) {
    if (layout_.line.isEmpty())
        return {};
    return line.draw(cells, layout_.line, prompt(), styles_.plain);
}

void RoomView::drawOffers(Cells& cells) {
    const Area above{0, 0, layout_.line.top, cells.columns()};
    line.drawOffers(cells, above,
                    {.plain = styles_.strip, .dim = styles_.stripDim, .marked = styles_.marked});
}

} // namespace larkspin
