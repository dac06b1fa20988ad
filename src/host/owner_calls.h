// What calls the owner where he doesn't look: his name in a room, or what is said to him alone. In
// words, for whoever tells him of it outside of the rooms.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace larkspin {

class Conversations;

struct OwnerCall {
    std::string place; // of the conversation
    std::string title; // whom he talks to, or the room
    std::string text;  // one line, as an eye may see it
};

class OwnerCalls {
public:
    // The conversations must live on. What they hold already calls nobody.
    explicit OwnerCalls(const Conversations& conversations);

    static constexpr std::size_t mostCharacters = 300; // of a text

    // The latest one since the last time. What is told of former times, and what is said in the
    // conversation that he looks at, calls nobody.
    std::optional<OwnerCall> take();

    // Whether he looks at that conversation now, or it has gone.
    bool isOver(const OwnerCall& call) const;

private:
    const Conversations& conversations_;
    std::uint64_t told_, revision_ = 0; // the last line's number; of the conversations
};

} // namespace larkspin
