// The half-typed line of each conversation: it is put away when the owner goes elsewhere, and there
// again when he is back. One that stands in the line when another conversation comes in front by
// itself stays there, since he types on: it is said where he has begun it.
#pragma once

#include "host/conversations.h"
#include "host/line_typing.h"

#include <cstdint>
#include <map>
#include <string>

namespace larkspin {

class HalfTyped {
public:
    // Both must outlive it. It is told of each line that is begun.
    HalfTyped(LineTyping& line, const Conversations& conversations);
    HalfTyped(const HalfTyped&) = delete;
    HalfTyped& operator=(const HalfTyped&) = delete;

    // To be called before the thread sleeps. True if the line belongs elsewhere than before.
    bool follow();

    // Where the line is that is typed now.
    Conversations::Begun begun() const;

    // That conversation, if it isn't the one in front; else null.
    const Conversation* elsewhere() const;

private:
    bool staysFor(const Conversations::Begun& front);
    void forgetGone();

    LineTyping& line_;
    const Conversations& conversations_;
    Conversations::Begun begun_;
    std::uint64_t moves_ = 0;             // those that are known of
    std::string staysBefore_;             // the place that has come in front of the line by itself
    std::map<std::string, Draft> halves_; // by place
};

} // namespace larkspin
