#include "irc/talk/irc_splits.h"

#include "host/conversations.h"
#include "irc/connection/irc_session.h"
#include "irc/protocol/irc_message.h"
#include "text/number.h"
#include "text/visible.h"

#include <algorithm>

namespace larkspin {

bool IrcSplits::isOfMany(const IrcMessage& message) const {
    const IrcBatch* const batch = session_.batches().of(message);
    return batch && ((batch->isSplit() && message.command == "QUIT") ||
                     (batch->isJoin() && message.command == "JOIN"));
}

void IrcSplits::add(const IrcMessage& message, const Conversation& conversation) {
    const std::string& batch = session_.batches().of(message)->reference;
    auto count = std::ranges::find_if(counts_, [&](const Count& each) {
        return each.batch == batch && each.place == conversation.place();
    });
    if (count == counts_.end())
        count = counts_.insert(counts_.end(), {batch, conversation.place(), "", 0});
    if (++count->people <= mostNamed)
        count->names += (count->people > 1 ? ", " : "") + visibleName(message.nick());
}

void IrcSplits::take(const IrcMessage& message) {
    const IrcBatch* const batch = session_.batches().of(message);
    if (message.command != "BATCH" || !message.parameter(0).starts_with('-') || !batch)
        return;
    std::string servers;
    for (const std::string& server : batch->parameters)
        servers += (servers.empty() ? "" : " and ") + visibleName(server);
    for (const Count& count : counts_) {
        Conversation* const conversation = conversations_.find(count.place);
        if (count.batch != batch->reference || !conversation)
            continue;
        const auto others =
            static_cast<std::int64_t>(count.people - std::min(count.people, mostNamed));
        const bool isOne = count.people == 1;
        const std::string does = batch->isSplit() ? (isOne ? " goes: " : " go: ")
                                                  : (isOne ? " comes back: " : " come back: ");
        conversations_.keep(
            *conversation,
            {.text = count.names + (others > 0 ? " and " + counted(others, "other") : "") + does +
                     servers + " have " + (batch->isSplit() ? "lost" : "found") + " each other"});
    }
    std::erase_if(counts_, [&](const Count& count) { return count.batch == batch->reference; });
}

} // namespace larkspin
