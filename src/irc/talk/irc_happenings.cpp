#include "irc/talk/irc_happenings.h"

#include "host/conversations.h"
#include "host/shown_room.h"
#include "irc/channels/irc_channels.h"
#include "irc/connection/irc_session.h"
#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_numerics.h"
#include "irc/talk/irc_answer_words.h"
#include "irc/talk/irc_news.h"

#include <algorithm>
#include <string>
#include <utility>

namespace larkspin {

namespace {

constexpr const char* lostHere = "the connection is lost";

} // namespace

// In the one in front he is told more of it.
void IrcHappenings::connectionLost() {
    splits_.clear();
    for (const IrcChannels::Place& place : channels_.all())
        if (!channels_.isInFront(place))
            conversations_.keep(*place.conversation, {.text = lostHere});
}

// If he is back after that.
void IrcHappenings::cameIn(std::string_view channel) {
    const IrcChannels::Place* const place = channels_.find(channel, session_.features());
    if (!place)
        return;
    const auto& lines = place->conversation->lines();
    const auto last = std::find_if(lines.rbegin(), lines.rend(), [](const KeptLine& line) {
        return line.kind == KeptLine::Kind::news;
    });
    if (last != lines.rend() && last->text == lostHere)
        conversations_.keep(*place->conversation, {.text = "you are back"});
}

// As he comes into a room he is told its topic there, and then who has set it, unless he has been
// told that already, as before a lost connection.
bool IrcHappenings::tellTopic(const IrcMessage& message) {
    const bool isTopic = message.command == numeric::topic;
    auto* const place = isTopic || message.command == numeric::topicSetter
                            ? channels_.find(message.parameter(1), session_.features())
                            : nullptr;
    if (!place)
        return false;
    const std::string text = isTopic ? "the topic is: " + plainText(message.parameter(2))
                                     : wordsOfAnswer(message, loop_);
    const auto isThat = [&](const KeptLine& line) {
        return line.isProgramsWord() && line.text == text;
    };
    Conversation& conversation = *place->conversation;
    const bool isTold = isTopic ? std::ranges::any_of(conversation.lines(), isThat)
                                : newTopicAt_ != conversation.place();
    if (!isTold)
        conversations_.keep(conversation, {.text = text});
    newTopicAt_ = isTopic && !isTold ? conversation.place() : "";
    return true;
}

// What happens in a channel stands there. That the owner is put out of one he hears wherever he is.
void IrcHappenings::tell(const IrcMessage& message) {
    splits_.take(message);
    if (tellTopic(message))
        return;
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
