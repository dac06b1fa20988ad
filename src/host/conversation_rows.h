// The conversations as an owner sees them one below the other: at home first, then each network
// under its name, with its rooms and then its private talks. And how he gets from one to another.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace larkspin {

class Conversation;
class Conversations;

struct ConversationRow {
    Conversation* conversation = nullptr; // null for the name of a network
    std::string place{};                  // of the conversation
    std::string caption{};                // as an eye may see it
    std::optional<int> number{};          // as `/room` has it
    int unread = 0, unreadForOwner = 0;
    bool isFront = false, isOpen = true;

    bool operator==(const ConversationRow&) const = default;

    // What stands there, in words: "#den, 4 unread, 1 for you".
    std::string spoken() const;
};

std::vector<ConversationRow> conversationRows(const Conversations& conversations);

// The one that stands so many below the one in front, or above it if negative, in a circle.
Conversation& besideFront(const Conversations& conversations, int steps);

// The next one below the one in front with something unread, in a circle; one where the owner was
// called before the others. Null for none.
Conversation* nextUnread(const Conversations& conversations);

} // namespace larkspin
