#include "host/conversation.h"

#include "chat/markup.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>

namespace larkspin {

namespace {

// Between the owner's clock, by which his own lines stand, and that of a network: seconds.
constexpr std::time_t mostBetweenClocks = 60;

// A network has a long line of the owner's in pieces, each of which stands in the whole.
constexpr std::size_t longestInOnePiece = 200;

bool isSame(const KeptLine& kept, const KeptLine& line) {
    if (kept.isProgramsWord() || kept.speaker != line.speaker || kept.isOwners != line.isOwners)
        return false;
    if (kept.mark && line.mark)
        return kept.mark == line.mark;
    if (std::abs(kept.at - line.at) > (line.isOwners ? mostBetweenClocks : 0))
        return false;
    const std::string whole = plainMarkup(kept.text), told = plainMarkup(line.text);
    const bool mayBePiece = line.isOwners && whole.size() > longestInOnePiece;
    return mayBePiece ? whole.find(told) != whole.npos : whole == told;
}

} // namespace

bool Conversation::holds(const KeptLine& line) const {
    return std::ranges::any_of(lines_, [&](const KeptLine& kept) { return isSame(kept, line); });
}

void Conversation::keep(KeptLine line, bool isInFront) {
    if (!isInFront && !line.isOwners && !line.isProgramsWord()) {
        ++unread_;
        unreadForOwner_ += line.isForOwner;
    }
    bytes_ += line.bytes();
    newest_ = line.number;
    auto place = lines_.end();
    while (line.isOld && place != lines_.begin() && std::prev(place)->at > line.at)
        --place;
    if (place != lines_.end())
        lastPutIn_ = line.number;
    lines_.insert(place, std::move(line));
    while (lines_.size() > mostLines || (bytes_ > mostBytes && lines_.size() > 1))
        dropOldest();
}

void Conversation::dropOldest() {
    bytes_ -= lines_.front().bytes();
    lines_.pop_front();
}

void Conversation::come() {
    readBefore_ = read_;
    unread_ = unreadForOwner_ = 0;
}

void Conversation::go() {
    read_ = newest_;
}

} // namespace larkspin
