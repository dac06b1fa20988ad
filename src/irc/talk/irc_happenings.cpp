#include "irc/talk/irc_happenings.h"

#include "host/conversations.h"
#include "host/shown_room.h"
#include "irc/channels/irc_channels.h"
#include "irc/connection/irc_session.h"
#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_numerics.h"
#include "irc/talk/irc_news.h"

#include <string>
#include <utility>

namespace larkspin {

// What happens in a channel stands there. That the owner is put out of one he hears wherever he is.
void IrcHappenings::tell(const IrcMessage& message) {
    splits_.take(message);
    for (const IrcChannels::Place& place : channels_.all()) {
        std::string text = newsOf(message, session_, place.channel);
        if (text.empty())
            continue;
        const bool isHim = message.command == "KICK" && session_.isSelf(message.parameter(1));
        if (splits_.isOfMany(message))
            splits_.add(message, *place.conversation);
        else
            conversations_.keep(*place.conversation,
                                {.text = std::move(text), .isForOwner = isHim});
    }
    if (const std::string text = newsOfOwner(message, session_); !text.empty())
        numeric::isNumeric(message.command) ? shown_.tell(text) : shown_.message(text);
}

} // namespace larkspin
