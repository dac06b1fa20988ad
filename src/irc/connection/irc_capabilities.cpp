#include "irc/connection/irc_capabilities.h"

#include "irc/protocol/irc_message.h"
#include "text/parts.h"
#include "text/typed_words.h"

#include <algorithm>

namespace larkspin {

namespace {

// Those of use whenever they are offered. The ones of which the program shows nothing yet are asked
// for too, where others depend on them.
constexpr std::string_view alwaysWanted[] = {
    "multi-prefix",      capability::time,    capability::echo,
    "message-tags",      capability::batch,   capability::labels,
    "account-tag",       "account-notify",    "extended-join",
    "chghost",           "userhost-in-names", "cap-notify",
    "invite-notify",     "standard-replies",  capability::draftHistory,
    capability::history,
};

std::vector<std::string_view> wordsOf(std::string_view list) {
    std::vector<std::string_view> words;
    for (std::string_view word; !(word = takeWord(list)).empty();)
        words.push_back(word);
    return words;
}

bool isAmong(const std::vector<std::string>& names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

} // namespace

bool IrcCapabilities::asksFor(std::string_view name) const {
    return isAmong(requested_, name);
}

bool IrcCapabilities::holds(std::string_view name) const {
    return isAmong(held_, name);
}

const std::string* IrcCapabilities::offered(std::string_view name) const {
    const auto found = std::ranges::find(offered_, name, &decltype(offered_)::value_type::first);
    return found == offered_.end() ? nullptr : &found->second;
}

void IrcCapabilities::begin() {
    send_(ircLine("CAP", {"LS", "302"}));
}

void IrcCapabilities::take(const IrcMessage& message, const WantsLogin& wantsLogin) {
    if (message.parameters.size() < 3)
        return;
    const std::string_view kind = message.parameter(1);
    const auto words = wordsOf(message.parameters.back());
    if (kind == "LS" && !isListed_) {
        takeOffers(words, wantsLogin);
        isListed_ = message.parameters.size() < 4; // otherwise there is a "*" for more to come
        if (isListed_)
            request();
    } else if (kind == "NEW" && isListed_) {
        takeOffers(words, wantsLogin);
        request();
    } else if (kind == "ACK") {
        for (const std::string_view word : words)
            takeGrant(word);
    } else if (kind == "NAK") {
        takeRefusal(words);
    } else if (kind == "DEL") {
        for (const std::string_view word : words)
            takeBack(word);
    }
}

bool IrcCapabilities::isOffer(const IrcMessage& message) {
    const std::string_view kind = message.parameter(1);
    return message.command == "CAP" && (kind == "LS" || kind == "NEW");
}

void IrcCapabilities::takeOffers(const std::vector<std::string_view>& words,
                                 const WantsLogin& wantsLogin) {
    for (const std::string_view word : words) {
        const auto [name, value, hasValue] = partedAt(word, '=');
        const bool isLogin = name == capability::sasl;
        const bool isTold = name == capability::sts; // and can't be asked for
        if (!isLogin && !isTold && std::ranges::find(alwaysWanted, name) == std::end(alwaysWanted))
            continue;
        std::erase_if(offered_, [&, of = name](const auto& known) { return known.first == of; });
        offered_.emplace_back(name, value);
        const bool isWanted = isLogin ? wantsLogin(value) : !isTold;
        if (isWanted && !isAmong(wanted_, name) && !asksFor(name) && !holds(name))
            wanted_.emplace_back(name);
    }
}

void IrcCapabilities::request() {
    std::string list;
    for (const std::string& name : wanted_)
        list += (list.empty() ? "" : " ") + name;
    requested_.insert(requested_.end(), wanted_.begin(), wanted_.end());
    wanted_.clear();
    if (!list.empty())
        send_(ircLine("CAP", {"REQ", list}));
}

// In the server's answers, signs may stand in front of a capability's name.
void IrcCapabilities::takeGrant(std::string_view word) {
    const auto signs = std::min(word.find_first_not_of("-~="), word.size());
    const std::string_view name = word.substr(signs);
    if (word.substr(0, signs).find('-') != word.npos)
        std::erase(held_, name);
    else if (std::erase(requested_, name) > 0)
        held_.emplace_back(name);
}

// A server refuses all capabilities of a request when it won't grant one of them. They are then
// asked for one by one.
void IrcCapabilities::takeRefusal(const std::vector<std::string_view>& words) {
    if (requested_.size() > 1 && !std::exchange(asksSingly_, true)) {
        for (const std::string& name : requested_)
            send_(ircLine("CAP", {"REQ", name}));
        return;
    }
    for (const std::string_view word : words)
        std::erase(requested_, word);
}

// A request that hasn't been answered stays: its answer comes all the same.
void IrcCapabilities::takeBack(std::string_view name) {
    std::erase(held_, name);
    std::erase_if(offered_, [&](const auto& known) { return known.first == name; });
}

} // namespace larkspin
