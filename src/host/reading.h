// How the owner reads conversations in a window, which shows one at a time: where each was left,
// where the unread begins, what has come below that he hasn't had in view, and what stands there,
// with lines from elsewhere among it. It keeps no lines of the conversations.
#pragma once

#include "host/conversation.h"
#include "host/passed_lines.h"
#include "host/shown_line.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace larkspin {

class Conversations;
class EventLoop;

class Reading {
public:
    // Both must outlive it.
    Reading(const Conversations& conversations, const EventLoop& loop);

    // Where a conversation is read: at its end, where the reader stays when more is said; or at a
    // line that begins so far above the upper edge, as the window measures.
    struct Spot {
        bool follows = true;
        std::uint64_t line = 0;
        int above = 0;
    };

    // The one that is shown; null once it has gone.
    const Conversation* shown() const;

    // Where the one that is shown is read, before it is shown anew, or another one is.
    void leave(const Spot& spot);

    // From now on that one is shown. Gives where it was left.
    const Spot& enter(const Conversation& conversation);

    // It will be shown at its end.
    void goToEnd(const Conversation& conversation) { left_[conversation.place()] = {}; }

    // What the owner hasn't read of the conversation begins where that is now.
    void markUnread(const Conversation& conversation);

    // All up to the line of that number has been in view; and how many have come since then.
    void see(std::uint64_t number) { seenUpTo_ = number; }
    int countBelow() const;

    // A line of another conversation, which is shown in the one in front from now on.
    ShownLine pass(const Conversation& from, const KeptLine& line);

    // False if lines had their time in front, or not, already.
    bool stamp(bool stamps);
    // The same for colours of the names.
    bool colorNames(bool colors);

    // The lines of these indices as they are shown, with the mark and those from elsewhere before
    // them; also those behind the last one, if `end` is. And one by itself.
    std::vector<ShownLine> lines(const Conversation& conversation, std::size_t first,
                                 std::size_t end) const;
    ShownLine line(const Conversation& conversation, const KeptLine& line) const;

private:
    struct Left {
        Spot spot{};
        std::uint64_t seenUpTo = 0;
    };
    ShownLine line(const PassedLine& line) const;
    std::string stampOf(const KeptLine& line) const;

    const Conversations& conversations_;
    const EventLoop& loop_;
    std::string shown_;                // a place
    std::map<std::string, Left> left_; // by place
    PassedLines passed_;
    std::uint64_t seenUpTo_ = 0; // the number of the last line that has been in view
    std::uint64_t mark_ = 0;     // the number of the line that the unread begins with, or 0
    bool stamps_ = true, colorsNames_ = false;
};

// The index of the first line with that number or a newer one.
std::size_t indexOf(const Conversation& conversation, std::uint64_t number);

} // namespace larkspin
