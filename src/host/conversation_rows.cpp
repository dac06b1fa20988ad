#include "host/conversation_rows.h"

#include "host/conversations.h"
#include "text/visible.h"

#include <algorithm>
#include <map>
#include <utility>

namespace larkspin {

namespace {

// Of the rooms at home, only the one where the owner is has a number that leads to it.
std::optional<int> numberOf(const Conversations& conversations, const Conversation& conversation) {
    if (conversation.isAtHome() && &conversation != &conversations.home())
        return std::nullopt;
    return conversations.numberOf(conversation);
}

ConversationRow rowOf(const Conversations& conversations, Conversation& conversation) {
    return {.conversation = &conversation,
            .place = conversation.place(),
            .caption = visibleName(conversation.name()),
            .number = numberOf(conversations, conversation),
            .unread = conversation.unread(),
            .unreadForOwner = conversation.unreadForOwner(),
            .isFront = &conversation == &conversations.front(),
            .isOpen = conversation.isOpen};
}

// Those below the one in front, and then those above it; the one in front is the last.
std::vector<Conversation*> fromFrontOn(const Conversations& conversations) {
    std::vector<Conversation*> all;
    for (const ConversationRow& row : conversationRows(conversations))
        if (row.conversation)
            all.push_back(row.conversation);
    const auto front = std::find(all.begin(), all.end(), &conversations.front());
    std::rotate(all.begin(), front + 1, all.end());
    return all;
}

} // namespace

std::string ConversationRow::spoken() const {
    std::string words = caption;
    if (unread > 0)
        words += ", " + std::to_string(unread) + " unread";
    if (unreadForOwner > 0)
        words += ", " + std::to_string(unreadForOwner) + " for you";
    return words + (isOpen ? "" : ", left") + (isFront ? ", here" : "");
}

std::vector<ConversationRow> conversationRows(const Conversations& conversations) {
    // By network, and private talks after the rooms.
    std::map<std::pair<int, bool>, std::vector<Conversation*>> groups;
    for (const auto& each : conversations.all())
        groups[{each->network(), each->kind() == Conversation::Kind::person}].push_back(each.get());
    std::vector<ConversationRow> rows;
    int network = 0;
    for (const auto& [group, members] : groups) {
        if (std::exchange(network, group.first) != group.first)
            rows.push_back({.caption = conversations.networkName(network)});
        for (Conversation* const member : members)
            rows.push_back(rowOf(conversations, *member));
    }
    return rows;
}

Conversation& besideFront(const Conversations& conversations, int steps) {
    const auto all = fromFrontOn(conversations);
    const int count = static_cast<int>(all.size());
    return *all[static_cast<std::size_t>(((steps - 1) % count + count) % count)];
}

Conversation* nextUnread(const Conversations& conversations) {
    Conversation* next = nullptr;
    for (Conversation* const each : fromFrontOn(conversations)) {
        if (each == &conversations.front())
            continue;
        if (each->unreadForOwner() > 0)
            return each;
        if (!next && each->unread() > 0)
            next = each;
    }
    return next;
}

} // namespace larkspin
