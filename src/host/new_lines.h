// What a front end has to show next of the conversations: the lines of the one in front, and of
// others what the owner should hear of wherever he is.
#pragma once

#include "host/conversation.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace larkspin {

class Conversations;
class EventLoop;

class NewLines {
public:
    explicit NewLines(const Conversations& conversations);

    struct Show {
        // Another conversation is in front. What he had read of it before isn't told again. Or its
        // last lines, also read ones, are to be shown again.
        std::function<void(const Conversation& conversation, bool isAgain)> entered;
        // There are more lines that he hasn't read than are to be told at once.
        std::function<void(int lines)> leftOut;
        std::function<void(const KeptLine& line)> line;
        std::function<void(const Conversation& conversation, const KeptLine& line)> elsewhere;
    };

    // Tells what is new since the last time, in the order in which it came; but an old line that
    // has come after newer ones, which are told now as well, before those.
    void take(const Show& show);

    // After another conversation has come in front, so many of its lines are told at most.
    static constexpr int mostUnread = 200;

private:
    struct New {
        const Conversation* conversation;
        const KeptLine* line;
        std::uint64_t place; // the least number from there on in its conversation
    };
    void addNew(const Conversation& conversation, std::uint64_t after, std::vector<New>& all) const;

    const Conversations& conversations_;
    std::string front_;       // its place
    std::uint64_t shown_ = 0; // the last line's number
    std::uint64_t revision_ = 0, again_ = 0;
};

// A line in words, without who says it where somebody does; and one of a conversation that isn't in
// front.
std::string wordsOf(const KeptLine& line);
std::string wordsFromElsewhere(const Conversations& all, const Conversation& conversation,
                               const KeptLine& line);

// When it was said, by the owner's clock: "19:05", with the day in front where that isn't today.
std::string stampOf(const KeptLine& line, const EventLoop& loop);

// How the owner is told that he is there now.
std::string wordsOfEntering(const Conversations& all, const Conversation& conversation);

} // namespace larkspin
