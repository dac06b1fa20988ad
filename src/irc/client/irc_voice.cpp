#include "irc/client/irc_voice.h"

#include "host/conversations.h"
#include "irc/channels/irc_channels.h"
#include "irc/channels/irc_joining.h"
#include "irc/connection/irc_session.h"
#include "irc/talk/irc_speech.h"
#include "text/visible.h"

#include <algorithm>

namespace larkspin {

bool IrcVoice::tellWithoutServer() const {
    if (!session_.isWelcomed())
        tell_("you are not connected");
    return !session_.isWelcomed();
}

void IrcVoice::message(const std::string& name, const std::string& text) {
    if (tellWithoutServer())
        return;
    // A message to a room that the owner is in is a line of his there, but nothing is ordered from
    // afar.
    if (const IrcChannels::Place* const place = channels_.find(name, session_.features()))
        return speak({place->channel.name(), text, false, channels_.isInFront(*place)});
    if (session_.features().isChannel(name))
        return tell_("you are not in " + visibleName(name));
    if (canBeTalkedTo(name))
        speak({.target = name, .text = text, .mayCommand = false});
}

// To a room that he isn't in as well: some take that, and the server tells if not.
void IrcVoice::notice(const std::string& name, const std::string& text) {
    if (tellWithoutServer())
        return;
    const IrcChannels::Place* const place = channels_.find(name, session_.features());
    if (place || session_.features().isChannel(name) || canBeTalkedTo(name))
        speak({.target = place ? place->channel.name() : name,
               .text = text,
               .mayCommand = false,
               .kind = KeptLine::Kind::noted});
}

bool IrcVoice::canBeTalkedTo(const std::string& name) const {
    const bool can = !name.empty() && std::ranges::none_of(name, endsIrcName) &&
                     !session_.features().isChannel(name);
    if (!can)
        tell_("a name has no blanks and commas");
    return can;
}

void IrcVoice::say(const std::string& line, bool isOnScreen) {
    const Conversation& front = conversations_.front();
    if (front.isOpen && isHere_(front))
        speak({front.name(), line, isOnScreen});
}

void IrcVoice::act(const std::string& doing) {
    const Conversation& front = conversations_.front();
    if (front.isOpen && isHere_(front))
        speak({.target = front.name(),
               .text = doing,
               .mayCommand = false,
               .kind = KeptLine::Kind::done});
}

void IrcVoice::speak(const IrcSaid& said) {
    if (speech_.say(IrcOutgoing::Kind::typed, said))
        return;
    tell_("too much waits to be said");
    speech_.lost().tell();
}

void IrcVoice::sayAgain() {
    const Conversation& front = conversations_.front();
    if (!isHere_(front))
        return tell_("/again is for a room or a talk on a network");
    if (tellWithoutServer())
        return;
    if (!front.isOpen)
        return tell_("nothing can be said here any more");
    const auto lines = speech_.lost().take(front.name());
    if (lines.empty())
        tell_("nothing of yours was lost here");
    for (const IrcSaid& said : lines)
        speak(said);
}

} // namespace larkspin
