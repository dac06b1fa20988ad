#include "irc/talk/irc_hearing.h"

#include "chat/markup.h"
#include "host/called_by_name.h"
#include "host/typed_secrets.h"
#include "irc/channels/irc_moderation.h"
#include "irc/connection/irc_session.h"
#include "irc/protocol/irc_markup.h"
#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_services.h"
#include "irc/protocol/irc_time.h"
#include "irc/talk/irc_news.h"
#include "text/characters.h"
#include "text/foreign_text.h"
#include "text/utf8.h"
#include "text/visible.h"

#include <algorithm>
#include <cstdint>
#include <functional>

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
    const std::string markup = markupOfIrc(asUtf8(codes));
    std::string harmless;
    for (std::string_view rest = markup; !rest.empty();) {
        const Character character = firstCharacter(rest);
        const bool isHarmless = character.valid && !steersDisplays(character.code);
        harmless += isHarmless ? rest.substr(0, character.length) : replacementCharacter;
        rest.remove_prefix(character.length);
    }
    return harmless;
}

// The server's name for it, in a number; 0 where it has none.
std::uint64_t markOf(const IrcMessage& message) {
    const std::string_view name = message.tag("msgid");
    return name.empty() ? 0 : std::max<std::uint64_t>(std::hash<std::string_view>()(name), 1);
}

} // namespace

void IrcHearing::take(const IrcMessage& message, IrcSpeech& speech) {
    const bool isSelf = session_.isSelf(message.nick());
    const std::string_view target = message.parameter(0);
    if (message.sender.empty())
        return;
    // A line under the owner's name may be one that this connection has said, sent back. What is
    // told once more of former times never is.
    const bool mayBeBack = isSelf && !isOld(message);
    if (mayBeBack && speech.take(message))
        return;
    if (!isSelf && moderation_.ignores(message.sender))
        return;
    if (auto* const place = channels_.find(target, session_.features()))
        hearIn(*place->conversation, message);
    else if (!isSelf && session_.features().isRankedChannel(target))
        hearAmongRanks(message);
    else if (!isSelf)
        hearPrivately(withoutToldSecrets(message));
    else if (!session_.isSelf(target))
        hearFromElsewhere(message);
}

bool IrcHearing::isOld(const IrcMessage& message) const {
    return session_.batches().isOld(message);
}

// By the server's clock, where it tells the time: a bouncer plays back what is long past.
std::time_t IrcHearing::timeOf(const IrcMessage& message) const {
    const auto told = momentOfIrc(message.tag("time"));
    return told ? std::min(*told, loop_.moment()) : 0;
}

bool IrcHearing::isAboutOwner(const Conversation& conversation, const std::string& markup) const {
    return conversation.kind() == Conversation::Kind::person ||
           callsByName(plainMarkup(markup), session_.nick());
}

// Of the messages between programs only actions are shown.
void IrcHearing::hearIn(Conversation& conversation, const IrcMessage& message) {
    using Kind = KeptLine::Kind;
    const std::string nick(message.nick());
    const std::string_view text = message.parameter(1), doing = actionIn(text);
    if (isRequest(text) && doing.empty())
        return;
    const bool isNotice = message.command == "NOTICE", isSelf = session_.isSelf(nick);
    const std::string said(doing.empty() ? text : doing);
    const std::string markup =
        harmlessMarkup(isSelf ? saidWithoutSecrets(conversation.name(), said) : said);
    const std::string place = conversation.place();
    conversations_.keep(conversation, {.kind = isNotice        ? Kind::noted
                                               : doing.empty() ? Kind::said
                                                               : Kind::done,
                                       .speaker = visibleName(nick),
                                       .text = markup,
                                       .at = timeOf(message),
                                       .isOwners = isSelf,
                                       .isForOwner = !isSelf && isAboutOwner(conversation, markup),
                                       .isOld = isOld(message),
                                       .mark = markOf(message)});
    if (!isSelf && !isNotice && doing.empty() && !isOld(message))
        lines_.heard({nick, markup}, place);
}

IrcMessage IrcHearing::withoutToldSecrets(IrcMessage message) {
    if (message.parameters.size() > 1)
        message.parameters[1] = toldSecrets_.without(message.nick(), message.parameters[1]);
    return message;
}

// A message to those who have a rank in a channel, whether that is in front or not. No song is
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
    const bool isForProgram = isRequest(text) && actionIn(text).empty();
    if (isForProgram || !(isServers || session_.isSelf(message.parameter(0))))
        return;
    const std::string who = visibleName(message.nick());
    const bool isNews = isNotice && (isServers || !talks_.find(message.nick()));
    if (isServers && isOld(message))
        return;
    if (!takesMessages_ && !isServers && !isIrcService(message.sender))
        shown_.message("a private message of " + who + " was refused");
    else if (isNews && !isOld(message))
        shown_.message(who + " notes: " + plainText(text));
    else
        hearIn(talks_.findOrBegin(message.nick()), message);
}

// What another program of the owner's has said to somebody, as bouncers tell it.
void IrcHearing::hearFromElsewhere(const IrcMessage& message) {
    const std::string_view target = message.parameter(0);
    const IrcFeatures& features = session_.features();
    if (!target.empty() && !features.isChannel(target) && !features.isRankedChannel(target) &&
        message.command != "NOTICE")
        hearIn(talks_.findOrBegin(target), message);
}

// The owner may have left the channel by now. He isn't obeyed there any more. What holds a secret
// is for a service, and no command.
void IrcHearing::reached(const IrcSaid& said, bool atOnce, const IrcMessage* cameBack) {
    const std::string text = saidWithoutSecrets(said.target, said.text);
    toldSecrets_.add(said.target, said.text, text);
    Conversation* const conversation = conversationOf(said);
    if (!conversation) {
        if (!said.isOnScreen)
            shown_.message((said.kind == KeptLine::Kind::noted ? "notice to " : "to ") +
                           visibleName(said.target) + ": " + plainMarkup(text));
        return;
    }
    const bool mayCommand = said.mayCommand && said.kind == KeptLine::Kind::said;
    conversations_.keep(*conversation,
                        {.kind = said.kind,
                         .speaker = visibleName(session_.nick()),
                         .text = text,
                         .at = cameBack ? timeOf(*cameBack) : 0,
                         .isOwners = true,
                         .isForOwner = !said.mayCommand && said.kind != KeptLine::Kind::done,
                         .isOnScreen = said.isOnScreen,
                         .mark = cameBack ? markOf(*cameBack) : 0});
    if (!mayCommand || said.hasCounted || text != said.text)
        return;
    if (atOnce)
        hearOwner(conversation->place(), text);
    else
        loop_.post([this, place = conversation->place(), text] { hearOwner(place, text); });
}

// Null if he has left, and for a notice to somebody whom he doesn't talk to.
Conversation* IrcHearing::conversationOf(const IrcSaid& said) {
    if (auto* const channel = channels_.find(said.target, session_.features()))
        return channel->conversation;
    if (session_.features().isChannel(said.target))
        return nullptr;
    return said.kind == KeptLine::Kind::noted ? talks_.find(said.target)
                                              : &talks_.findOrBegin(said.target);
}

// He may have left by now, or have another name.
void IrcHearing::hearOwner(const std::string& place, const std::string& text) {
    const Conversation* const conversation = conversations_.find(place);
    if (conversation && conversation->isOpen)
        lines_.heard({session_.nick(), text}, place);
}

} // namespace larkspin
