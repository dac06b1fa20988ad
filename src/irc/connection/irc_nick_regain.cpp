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
}

void IrcNickRegain::look() {
    if (!isMonitored_)
        request_("ISON", {nick_});
}

void IrcNickRegain::take(const IrcMessage& message, const IrcFeatures& features) {
    if (nick_.empty())
        return;
    const std::string& command = message.command;
    // A server that watches names tells by itself, also of one that is free already.
    if (command == numeric::features && features.hasMonitor && !isMonitored_) {
        isMonitored_ = true;
        request_("MONITOR", {"+", nick_});
    } else if (command == numeric::monitorsFull) {
        isMonitored_ = false;
    } else if (command == numeric::badNick && names(message.parameter(1), nick_, features)) {
        end();
    } else {
        const bool isTold = command == numeric::monitoredOffline;
        const bool isHolders = command == "QUIT" || command == "NICK";
        if ((isTold && names(message.parameter(1), nick_, features)) ||
            (isHolders && names(message.nick(), nick_, features)) ||
            (command == numeric::isOn && !names(message.parameter(1), nick_, features)))
            request_("NICK", {nick_});
    }
}

} // namespace larkspin
