// The half-typed line of each conversation: it is put away when the owner goes elsewhere, and there
// again when he is back. One that stands in the line when another conversation comes in front by
// itself stays there, since he types on: it is said where he has begun it.
#pragma once

#include "host/conversations.h"
#include "platform/qt/room/input_line.h"

#include <cstdint>
#include <map>
#include <string>

namespace larkspin {

class HalfTyped {
public:
    // Both must outlive it.
    HalfTyped(InputLine& input, const Conversations& conversations);

    // To be called before the thread sleeps. True if the line belongs elsewhere than before.
    bool follow();

    // Where the line is that is typed now.
    Conversations::Begun begun() const;

    // That conversation, if it isn't the one in front; else null.
    const Conversation* elsewhere() const;

private:
    void begin();
    bool staysFor(const Conversations::Begun& front);
    void forgetGone();

    InputLine& input_;
    const Conversations& conversations_;
    Conversations::Begun begun_;
    std::uint64_t moves_ = 0; // those that are known of
    std::string staysBefore_; // the place that has come in front of the line by itself
    std::map<std::string, InputLine::Draft> halves_; // by place
};

} // namespace larkspin
