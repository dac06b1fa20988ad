#include "irc/connection/irc_nick_regain.h"

#include "irc/protocol/irc_features.h"
#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_numerics.h"
#include "text/parts.h"
#include "text/typed_words.h"

namespace larkspin {

namespace {

// Whether one of the names, which blanks or commas part, is that one. A name may be told with its
// user and host.
bool names(std::string_view list, const std::string& nick, const IrcFeatures& features) {
    while (!list.empty()) {
        std::string_view part = takePart(list, ',');
        for (std::string_view word; !(word = takeWord(part)).empty();)
            if (features.fold(partedAt(word, '!').head) == features.fold(nick))
                return true;
    }
    return false;
}

} // namespace

void IrcNickRegain::begin(const std::string& nick) {
    end();
    nick_ = nick;
    timer_ = loop_.every(betweenLooks, [this] { look(); });
}

void IrcNickRegain::end() {
    loop_.cancel(std::exchange(timer_, TimerId::none));
    if (std::exchange(isMonitored_, false))
        request_("MONITOR", {"-", nick_});
    nick_.clear();
    isAskedFor_ = wasRefused_ = false;
}

// A name that is free may be refused for a while, of which no server tells that it is over.
void IrcNickRegain::look() {
    if (!isMonitored_ || std::exchange(wasRefused_, false))
        request_("ISON", {nick_});
}

bool IrcNickRegain::isFree(const IrcMessage& message, const IrcFeatures& features) const {
    const std::string& command = message.command;
    if (command == "QUIT" || command == "NICK")
        return names(message.nick(), nick_, features);
    const bool isListed = names(message.parameter(1), nick_, features);
    return (command == numeric::monitoredOffline && isListed) ||
           (command == numeric::isOn && !isListed);
}

bool IrcNickRegain::take(const IrcMessage& message, const IrcFeatures& features) {
    if (nick_.empty())
        return false;
    const std::string& command = message.command;
    const bool isUnavailable = command == numeric::nickInUse || command == numeric::nickUnavailable;
    // A server that watches names tells by itself, also of one that is free already.
    if (command == numeric::features && features.hasMonitor && !isMonitored_) {
        isMonitored_ = true;
        request_("MONITOR", {"+", nick_});
    } else if (command == numeric::monitorsFull) {
        isMonitored_ = false;
    } else if (command == numeric::badNick && names(message.parameter(1), nick_, features)) {
        end();
    } else if (isUnavailable && names(message.parameter(1), nick_, features)) {
        const bool isAnswer = std::exchange(isAskedFor_, false);
        wasRefused_ = wasRefused_ || isAnswer;
        return isAnswer;
    } else if (isFree(message, features)) {
        isAskedFor_ = true;
        request_("NICK", {nick_});
    }
    return false;
}

} // namespace larkspin
