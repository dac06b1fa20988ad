#include "host/conversation.h"

#include <utility>

namespace larkspin {

void Conversation::keep(KeptLine line, bool isInFront) {
    if (!isInFront && !line.isOwners && !line.isProgramsWord()) {
        ++unread_;
        unreadForOwner_ += line.isForOwner;
    }
    bytes_ += line.bytes();
    lines_.push_back(std::move(line));
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
    if (!lines_.empty())
        read_ = lines_.back().number;
}

} // namespace larkspin
