// Servers that lose each other, and find each other again: the many who go or come at once are told
// in one line for each conversation.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace larkspin {

class Conversation;
class Conversations;
class IrcSession;
struct IrcMessage;

class IrcSplits {
public:
    // Both must live on.
    IrcSplits(Conversations& conversations, const IrcSession& session)
        : conversations_(conversations), session_(session) {}

    static constexpr std::size_t mostNamed = 5; // of those who go or come

    // Whether somebody goes or comes with many others. What it is that he does is told later.
    bool isOfMany(const IrcMessage& message) const;
    void add(const IrcMessage& message, const Conversation& conversation);

    // A BATCH message: if that was all, tells of it.
    void take(const IrcMessage& message);

    // No more is told of what has begun.
    void clear() { counts_.clear(); }

private:
    struct Count {
        std::string batch, place;
        std::string names;
        std::size_t people = 0;
    };

    Conversations& conversations_;
    const IrcSession& session_;
    std::vector<Count> counts_;
};

} // namespace larkspin
