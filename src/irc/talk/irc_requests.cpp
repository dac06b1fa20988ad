#include "irc/talk/irc_requests.h"

#include "irc/connection/irc_session.h"
#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_time.h"
#include "shell/version.h"
#include "text/characters.h"
#include "text/typed_words.h"
#include "text/visible.h"

#include <algorithm>

namespace larkspin {

namespace {

constexpr char aroundIt = '\x01';
constexpr std::time_t oldAfter = 60;        // seconds
constexpr std::size_t longestPing = 64;     // bytes that are sent back
constexpr std::size_t longestNameTold = 20; // of the name of a request

// What stands between the marks, of which servers may have cut off the second one.
std::string_view requestIn(std::string_view text) {
    text.remove_prefix(1);
    return text.substr(0, text.find(aroundIt));
}

std::string visibleAscii(std::string_view text) {
    std::string harmless;
    for (const char byte : text.substr(0, longestPing))
        if (isAscii(byte) && !isControl(byte))
            harmless += byte;
    return harmless;
}

std::string capitals(std::string_view word) {
    std::string text(word);
    std::ranges::transform(text, text.begin(), capitalAscii);
    return text;
}

} // namespace

bool IrcRequests::isMeant(const IrcMessage& message) const {
    const std::string_view target = message.parameter(0);
    const auto told = momentOfIrc(message.tag("time"));
    return message.command == "PRIVMSG" && message.parameter(1).starts_with(aroundIt) &&
           message.sender.find('!') != std::string::npos && !session_.isSelf(message.nick()) &&
           (session_.isSelf(target) || session_.features().isChannel(target)) &&
           message.tag("batch").empty() && !(told && *told < loop_.moment() - oldAfter);
}

bool IrcRequests::isTooMuch() {
    while (!takenAt_.empty() && loop_.now() - takenAt_.front() >= span)
        takenAt_.pop_front();
    if (takenAt_.size() >= most)
        return true;
    takenAt_.push_back(loop_.now());
    return false;
}

std::optional<std::string> IrcRequests::answerTo(const std::string& request,
                                                 std::string_view text) const {
    if (request == "VERSION")
        return "larkspin " + versionText();
    if (request == "PING")
        return visibleAscii(text);
    if (request == "CLIENTINFO")
        return "ACTION CLIENTINFO PING TIME VERSION";
    if (request != "TIME")
        return std::nullopt;
    const std::tm now = loop_.localTime();
    char date[32] = "";
    std::strftime(date, sizeof date, "%Y-%m-%d %H:%M:%S", &now);
    return date;
}

void IrcRequests::take(const IrcMessage& message) {
    if (!isMeant(message))
        return;
    std::string_view rest = requestIn(message.parameter(1));
    const std::string request = capitals(takeWord(rest));
    if (request.empty() || request == "ACTION" || isTooMuch())
        return;
    shown_.message(visibleName(message.nick()) + "'s program asks for " +
                   visibleName(std::string_view(request).substr(0, longestNameTold)));
    using Kind = IrcOutgoing::Kind;
    IrcOutgoing& outgoing = session_.outgoing();
    for (const Kind kind : {Kind::protocol, Kind::typed, Kind::said, Kind::recited})
        if (outgoing.waiting(kind) > 0)
            return;
    if (const auto answer = answerTo(request, textAfter(rest)))
        session_.send(Kind::said,
                      ircLine("NOTICE", {std::string(message.nick()),
                                         aroundIt + request + ' ' + *answer + aroundIt}));
}

} // namespace larkspin
