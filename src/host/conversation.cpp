#include "host/conversation.h"

#include "chat/markup.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <utility>

namespace larkspin {

namespace {

// Between the owner's clock, by which his own lines stand, and that of a network: seconds.
constexpr std::time_t mostBetweenClocks = 60;

// A network has a long line of the owner's in pieces, each of which stands in the whole.
constexpr std::size_t longestInOnePiece = 200;

std::size_t hashOf(const std::string& words) {
    return std::hash<std::string>()(words);
}

// Thousands of lines may be told once more, each of which is compared with all that are kept. So
// most are told apart without a look at their texts.
bool isSame(const KeptLine& kept, const KeptLine& line, const std::string& words) {
    if (kept.isProgramsWord() || kept.isOwners != line.isOwners)
        return false;
    if (kept.mark && line.mark)
        return kept.mark == line.mark && kept.speaker == line.speaker;
    const bool mayBePiece = line.isOwners && kept.text.size() > longestInOnePiece;
    if (std::abs(kept.at - line.at) > (line.isOwners ? mostBetweenClocks : 0) ||
        (!mayBePiece && kept.words != line.words) || kept.speaker != line.speaker)
        return false;
    const std::string whole = plainMarkup(kept.text);
    return mayBePiece && whole.size() > longestInOnePiece ? whole.find(words) != whole.npos
                                                          : whole == words;
}

} // namespace

bool Conversation::holds(KeptLine line) const {
    const std::string words = plainMarkup(line.text);
    line.words = hashOf(words);
    return std::ranges::any_of(lines_,
                               [&](const KeptLine& kept) { return isSame(kept, line, words); });
}

std::size_t Conversation::firstUnread() const {
    const auto isUnread = [this](const KeptLine& line) {
        return line.number > readBefore_ && !line.isOwners && !line.isProgramsWord() &&
               !line.isUndated;
    };
    auto first = lines_.end();
    for (auto line = lines_.end();
         line != lines_.begin() && ((--line)->number > readBefore_ || lastPutIn_ > readBefore_);)
        if (isUnread(*line))
            first = line;
    return static_cast<std::size_t>(first - lines_.begin());
}

int Conversation::linesAfter(std::uint64_t number) const {
    int count = 0;
    for (auto line = lines_.rbegin();
         line != lines_.rend() && (line->number > number || lastPutIn_ > number); ++line)
        count += line->number > number;
    return count;
}

bool Conversation::calls(const KeptLine& line) const {
    return line.isForOwner && !line.isOwners && kind() != Kind::person;
}

void Conversation::keep(KeptLine line, bool isInSight) {
    if (!isInSight && !line.isOwners && !line.isProgramsWord() && !line.isUndated) {
        ++unread_;
        unreadForOwner_ += line.isForOwner;
    }
    line.words = line.isProgramsWord() ? 0 : hashOf(plainMarkup(line.text));
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
