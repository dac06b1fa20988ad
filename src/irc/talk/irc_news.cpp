#include "irc/talk/irc_news.h"

#include "host/typed_secrets.h"
#include "irc/channels/irc_channel.h"
#include "irc/connection/irc_session.h"
#include "irc/protocol/irc_markup.h"
#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_numerics.h"
#include "text/foreign_text.h"
#include "text/visible.h"

#include <algorithm>

namespace larkspin {

namespace {

std::string plain(const IrcMessage& message, std::size_t parameter) {
    return plainText(message.parameter(parameter));
}

// What it is about, and the sentence. The code between them is for programs.
std::string standardReply(const IrcMessage& message) {
    const std::size_t count = message.parameters.size();
    std::string about = message.parameter(0) == "*" || count < 3 ? "" : plain(message, 0);
    for (std::size_t context = 2; context + 1 < count; ++context)
        about += (about.empty() ? "" : " ") + plain(message, context);
    return about + (about.empty() ? "" : ": ") + (count > 0 ? plain(message, count - 1) : "");
}

// The last one after a colon, as the server wrote it.
std::string wordsFrom(const IrcMessage& message, std::size_t from) {
    std::string all;
    const std::size_t end = message.parameters.size();
    for (std::size_t word = from; word < end; ++word) {
        const bool isText = word + 1 == end && word > from && message.command != "MODE";
        if (word > from)
            all += isText ? ": " : " ";
        all += plain(message, word);
    }
    return all;
}

// A room's key is among the modes.
std::string modesIn(const IrcMessage& message) {
    constexpr std::string_view command = "MODE ";
    return protocolWithoutSecrets(std::string(command) + wordsFrom(message, 1))
        .substr(command.size());
}

// Refusals, in the server's words, and the few answers that somebody waits for.
std::string answerIn(const IrcMessage& message) {
    static constexpr std::string_view answers[] = {numeric::away, numeric::noTopic, numeric::topic,
                                                   numeric::hasBeenTold};
    const std::string& command = message.command;
    // A server without a message of the day isn't news for the owner.
    if (command == numeric::noGreeting)
        return {};
    if (!numeric::isRefusal(command) && std::ranges::find(answers, command) == std::end(answers))
        return {};
    // A parameter that is no good as a room's key may be so for another one.
    IrcMessage shown = message;
    if (command == numeric::badModeParameter && message.parameter(2) == "k" &&
        message.parameters.size() > 4)
        shown.parameters[3] = secretMask;
    return wordsFrom(shown, 1);
}

// As somebody gives it. Servers put one of the names where none was given.
std::string because(const std::string& news, const IrcMessage& message, std::size_t parameter) {
    const std::string reason = plain(message, parameter);
    const bool isName =
        message.command == "KICK" && (message.parameter(parameter) == message.nick() ||
                                      message.parameter(parameter) == message.parameter(1));
    return reason.empty() || isName ? news : news + ": " + reason;
}

} // namespace

std::string newsOf(const IrcMessage& message, const IrcSession& session,
                   const IrcChannel& channel) {
    const std::string& command = message.command;
    const std::string who = visibleName(message.nick());
    const bool isOfOthers = !session.isSelf(message.nick());
    const bool isThere = session.isSame(channel.name(), message.parameter(0));
    const auto knows = [&] { return channel.contains(message.nick(), session.features()); };
    if (command == "JOIN" && isThere && isOfOthers)
        return who + " comes in";
    if (command == "PART" && isThere && isOfOthers)
        return because(who + " goes", message, 1);
    if (command == "QUIT" && isOfOthers && knows())
        return because(who + " goes", message, 0);
    if (command == "KICK" && isThere)
        return because(session.isSelf(message.parameter(1))
                           ? who + " puts you out of " + plain(message, 0)
                           : plain(message, 1) + " is put out by " + who,
                       message, 2);
    // If the owner has got another name, the session knows him by that already.
    if (command == "NICK" && !session.isSelf(message.parameter(0)) && knows())
        return who + " is now called " + plain(message, 0);
    if (command == "MODE" && isThere)
        return who + " sets " + modesIn(message);
    if (command == "TOPIC" && isThere)
        return who + " sets the topic: " + plain(message, 1);
    return {};
}

std::string newsOfOwner(const IrcMessage& message, const IrcSession& session) {
    const std::string& command = message.command;
    const std::string who = visibleName(message.nick());
    if (command == "NICK" && session.isSelf(message.parameter(0)))
        return "you are now called " + plain(message, 0);
    if (command == "INVITE")
        return who + " invites " +
               (session.isSelf(message.parameter(0))
                    ? "you to " + plain(message, 1) + ": /join " + plain(message, 1) +
                          " leads there"
                    : plain(message, 0) + " to " + plain(message, 1));
    if (command == "KILL")
        return who + " ends your connection: " + plain(message, 1);
    if (command == "FAIL")
        return standardReply(message);
    if (command == "WARN")
        return "warning: " + standardReply(message);
    if (command == "NOTE")
        return "note: " + standardReply(message);
    return answerIn(message);
}

std::string plainText(std::string_view codes) {
    return visibleText(withoutIrcCodes(asUtf8(codes)), " ");
}

} // namespace larkspin
