#include "irc/talk/irc_history.h"

#include "irc/channels/irc_channels.h"
#include "irc/connection/irc_session.h"
#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_time.h"

#include <algorithm>
#include <string>

namespace larkspin {

namespace {

constexpr const char* historyCommand = "CHATHISTORY";

// By the server's clock: his own lines may stand at the owner's.
const KeptLine* lastTimedByServer(const Conversation& conversation) {
    const auto& lines = conversation.lines();
    const auto found = std::find_if(lines.rbegin(), lines.rend(), [](const KeptLine& line) {
        return !line.isProgramsWord() && (line.mark != 0 || !line.isOwners);
    });
    return found == lines.rend() ? nullptr : &*found;
}

} // namespace

// The last ones since then: what is older is left out, if that is too much.
void IrcHistory::cameIn(std::string_view channel) {
    const bool isThere =
        session_.holds(capability::history) || session_.holds(capability::draftHistory);
    const auto* const place = channels_.find(channel, session_.features());
    if (!place || !isThere || !session_.holds(capability::batch) ||
        !session_.holds(capability::time))
        return;
    const KeptLine* const last = lastTimedByServer(*place->conversation);
    std::size_t most = last ? mostSince : mostOfNew;
    if (const std::size_t bound = session_.features().mostHistory; bound > 0)
        most = std::min(most, bound);
    session_.request(historyCommand,
                     {"LATEST", place->channel.name(),
                      last ? "timestamp=" + ircTime(last->at) : "*", std::to_string(most)});
}

bool IrcHistory::isRefusal(const IrcMessage& message) {
    return message.command == "FAIL" && message.parameter(0) == historyCommand;
}

} // namespace larkspin
