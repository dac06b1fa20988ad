#include "irc/talk/irc_hearing.h"

#include "irc/channels/irc_moderation.h"
#include "irc/connection/irc_session.h"
#include "irc/protocol/irc_markup.h"
#include "irc/protocol/irc_message.h"
#include "irc/talk/irc_news.h"
#include "text/characters.h"
#include "text/utf8.h"
#include "text/visible.h"

namespace larkspin {

namespace {

// Messages between programs stand between two of these; one kind of them is meant for people.
constexpr char aroundRequest = '\x01';
constexpr std::string_view action = "\x01"
                                    "ACTION ";

bool isRequest(std::string_view text) {
    return text.starts_with(aroundRequest);
}

// The text of an action ("/me waves"); empty for any other request.
std::string_view actionIn(std::string_view text) {
    if (!text.starts_with(action))
        return {};
    text.remove_prefix(action.size());
    return text.substr(0, text.find(aroundRequest));
}

// Control characters, what ends a line by Unicode, and what turns the direction of writing.
bool steersDisplays(char32_t code) {
    return isControl(code) || (code >= 0x2028 && code <= 0x202E) ||
           (code >= 0x2066 && code <= 0x2069) || code == 0x61C || code == 0x200E || code == 0x200F;
}

// The text in the client's markup, without characters that could do harm. Scripts get these lines
// as they are, and may show them on a terminal, or take them for UTF-8.
std::string harmlessMarkup(std::string_view codes) {
    const std::string markup = markupOfIrc(codes);
    std::string harmless;
    for (std::string_view rest = markup; !rest.empty();) {
        const Character character = firstCharacter(rest);
        const bool isHarmless = character.valid && !steersDisplays(character.code);
        harmless += isHarmless ? rest.substr(0, character.length) : replacementCharacter;
        rest.remove_prefix(character.length);
    }
    return harmless;
}

} // namespace

bool IrcHearing::isHere(std::string_view channel) {
    return channels_.isHere(channels_.find(channel, session_.features()));
}

void IrcHearing::take(const IrcMessage& message, IrcSpeech& speech) {
    const bool isNotice = message.command == "NOTICE";
    const bool isSelf = session_.isSelf(message.nick());
    IrcChannels::Place* const place = channels_.find(message.parameter(0), session_.features());
    if (message.sender.empty())
        return;
    // A line under the owner's name may be one that this connection has said, sent back.
    if (isSelf && !isNotice && place && speech.take(message.parameter(0), message.parameter(1)))
        return;
    if (!isSelf && moderation_.ignores(message.nick()))
        return;
    if (place && channels_.isHere(place))
        hearInRoom(message, isSelf);
    else if (place)
        ++place->unseen;
    else if (!isSelf && session_.features().isRankedChannel(message.parameter(0)))
        hearAmongRanks(message);
    else if (!isSelf)
        hearPrivately(message);
}

void IrcHearing::hearInRoom(const IrcMessage& message, bool isSelf) {
    const std::string_view text = message.parameter(1);
    const std::string nick(message.nick()), shownNick = visibleName(nick);
    if (message.command == "NOTICE") {
        if (!isRequest(text))
            shown_.message(shownNick + " notes: " + plainText(text));
        return;
    }
    // Of the messages between programs only actions are shown.
    if (isRequest(text)) {
        if (const auto doing = actionIn(text); !doing.empty())
            shown_.message("* " + shownNick + ' ' + plainText(doing));
        return;
    }
    const std::string markup = harmlessMarkup(text);
    shown_.line({shownNick, markup});
    if (!isSelf)
        lines_.heard({nick, markup}, session_.placeOf(message.parameter(0)));
}

// A message to those who have a rank in a channel, whether that is the room or not. No song is
// ordered in such messages.
void IrcHearing::hearAmongRanks(const IrcMessage& message) {
    const std::string_view text = message.parameter(1);
    if (!isRequest(text))
        shown_.message(visibleName(message.nick()) + " to " + visibleName(message.parameter(0)) +
                       ": " + plainText(text));
}

// A message to this connection alone, or one from the server.
void IrcHearing::hearPrivately(const IrcMessage& message) {
    const std::string_view text = message.parameter(1);
    const bool isNotice = message.command == "NOTICE";
    const bool isServers = isNotice && message.sender.find('!') == std::string::npos;
    if (isRequest(text) || !(isServers || session_.isSelf(message.parameter(0))))
        return;
    const std::string who = visibleName(message.nick());
    if (!takesMessages_ && !isServers)
        shown_.message("a private message of " + who + " was refused");
    else
        shown_.message(who + (isNotice ? " notes: " : " whispers: ") + plainText(text));
}

void IrcHearing::reached(const IrcSaid& said, bool atOnce) {
    // The owner may be in another room by now. The line isn't taken for a command then.
    if (!isHere(said.channel)) {
        if (!said.isShown)
            shown_.message("to " + visibleName(said.channel) + ": " + plainMarkup(said.text));
        return;
    }
    if (!said.isShown)
        shown_.line({visibleName(session_.nick()), said.text});
    if (atOnce)
        hearOwner(said.channel, said.text);
    else
        loop_.post([this, said] { hearOwner(said.channel, said.text); });
}

// The owner may have left the room by now, or have another name.
void IrcHearing::hearOwner(const std::string& channel, const std::string& text) {
    if (isHere(channel))
        lines_.heard({session_.nick(), text}, session_.placeOf(channel));
}

} // namespace larkspin
