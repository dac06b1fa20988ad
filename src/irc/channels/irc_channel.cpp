#include "irc/channels/irc_channel.h"

#include "irc/channels/irc_origin.h"
#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_numerics.h"
#include "text/characters.h"
#include "text/parts.h"
#include "text/typed_words.h"

#include <algorithm>

namespace larkspin {

namespace {

// A rank is kept as a bit for its mode letter, so that it stays right when the server tells of its
// ranks anew.
std::uint64_t bitOf(char mode) {
    if (!isLetter(mode))
        return 0;
    return std::uint64_t(1) << (isCapital(mode) ? mode - 'A' + 26 : mode - 'a');
}

bool holds(const std::string& modes, char mode) {
    return modes.find(mode) != modes.npos;
}

// Goes through the parameters of a MODE one by one. They are single words, but the last parameter
// of a message may hold several of them.
class Parameters {
public:
    Parameters(const IrcMessage& message, std::size_t first) : message_(message), number_(first) {}

    std::string_view next() {
        std::string_view word = takeWord(rest_);
        while (word.empty() && number_ < message_.parameters.size()) {
            rest_ = message_.parameters[number_++];
            word = takeWord(rest_);
        }
        return word;
    }

private:
    const IrcMessage& message_;
    std::size_t number_;
    std::string_view rest_;
};

bool takesParameter(char mode, bool isSet, const IrcFeatures& features) {
    return holds(features.listModes, mode) || holds(features.parameterModes, mode) ||
           (isSet && holds(features.setParameterModes, mode));
}

} // namespace

bool IrcChannel::contains(std::string_view nick, const IrcFeatures& features) const {
    return people_.find(features.fold(nick)) != nullptr;
}

std::string IrcChannel::ranks(std::string_view nick, const IrcFeatures& features) const {
    std::string signs;
    if (const auto* const presence = people_.find(features.fold(nick)))
        for (std::size_t rank = 0; rank < features.rankModes.size(); ++rank)
            if (presence->ranks & bitOf(features.rankModes[rank]))
                signs += features.rankSigns[rank];
    return signs;
}

bool IrcChannel::mayEject(std::string_view nick, const IrcFeatures& features) const {
    constexpr std::string_view modes = "qaoh";
    const auto* const presence = people_.find(features.fold(nick));
    return presence && std::ranges::any_of(
                           modes, [&](char mode) { return (presence->ranks & bitOf(mode)) != 0; });
}

bool IrcChannel::isCodeless(const IrcFeatures& features) const {
    return refusesCodes_ || std::ranges::any_of(features.codelessModes, [&](char mode) {
               return (modes_ & bitOf(mode)) != 0;
           });
}

bool IrcChannel::isThis(std::string_view name, const IrcFeatures& features) const {
    return name.size() == name_.size() && features.fold(name) == features.fold(name_);
}

void IrcChannel::take(const IrcMessage& message, const IrcFeatures& features) {
    const std::string& command = message.command;
    // An answer names its receiver first, so the channel stands one parameter later than in other
    // messages, and in the list of names two.
    const bool isAnswer = numeric::isNumeric(command);
    if (command == "QUIT")
        people_.remove(features.fold(message.nick()));
    else if (command == "NICK")
        people_.rename(features.fold(message.nick()), features.fold(message.parameter(0)),
                       message.parameter(0));
    else if (command == numeric::names && isThis(message.parameter(2), features))
        takeNames(message.parameter(3), features);
    else if (isAnswer && isThis(message.parameter(1), features))
        takeAnswer(message, features);
    else if (!isAnswer && isThis(message.parameter(0), features))
        takeNews(message, features);
    if (const auto told = originIn(message))
        learn(*told, features);
}

// What isn't told stays.
void IrcChannel::learn(const IrcOrigin& told, const IrcFeatures& features) {
    IrcPresence* const known = people_.find(features.fold(told.nick));
    if (!known)
        return;
    const auto take = [](std::string& to, std::string_view value) {
        if (!value.empty() && value.size() <= IrcNameList::longestName)
            to = value;
    };
    take(known->user, told.user);
    take(known->host, told.host);
    take(known->account, told.account);
}

void IrcChannel::takeNews(const IrcMessage& message, const IrcFeatures& features) {
    const std::string& command = message.command;
    if (command == "PART")
        people_.remove(features.fold(message.nick()));
    else if (command == "KICK")
        people_.remove(features.fold(message.parameter(1)));
    else if (command == "TOPIC")
        topic_ = message.parameter(1);
    else if (command == "MODE")
        takeModes(message, 1, features);
    else if (command == "JOIN")
        if (IrcPresence* const presence = come(message.nick(), features))
            // Nothing holds any more of somebody of that name who was here before.
            *presence = {};
}

void IrcChannel::takeAnswer(const IrcMessage& message, const IrcFeatures& features) {
    if (message.command == numeric::ban)
        bans_.add(message.parameter(2), features);
    else if (message.command == numeric::channelModes)
        modes_ = 0, takeModes(message, 2, features);
    else if (message.command == numeric::topic)
        topic_ = message.parameter(2);
    else if (message.command == numeric::noTopic)
        topic_.clear();
}

// Adds somebody; null when the list is full.
IrcPresence* IrcChannel::come(std::string_view nick, const IrcFeatures& features) {
    const std::string folded = features.fold(nick);
    people_.add(folded, nick);
    return people_.find(folded);
}

// "@+ann bob carol!user@host"
void IrcChannel::takeNames(std::string_view names, const IrcFeatures& features) {
    for (std::string_view word; !(word = takeWord(names)).empty();)
        takeName(word, features);
}

// A server may show only the sign of the highest rank. Lower ranks that are known already stay
// then.
void IrcChannel::takeName(std::string_view word, const IrcFeatures& features) {
    const auto signs = std::min(word.find_first_not_of(features.rankSigns), word.size());
    const std::string_view shown = word.substr(0, signs);
    const IrcOrigin origin = readIrcOrigin(word.substr(signs));
    IrcPresence* const known = come(origin.nick, features);
    if (!known)
        return;
    std::uint64_t ranks = 0;
    for (std::size_t rank = 0; rank < features.rankModes.size(); ++rank) {
        const std::uint64_t bit = bitOf(features.rankModes[rank]);
        if (shown.find(features.rankSigns[rank]) != shown.npos || (ranks && known->ranks & bit))
            ranks |= bit;
    }
    known->ranks = ranks;
    learn(origin, features);
}

void IrcChannel::takeModes(const IrcMessage& message, std::size_t letters,
                           const IrcFeatures& features) {
    Parameters parameters(message, letters + 1);
    bool isSet = true;
    // Parameters belong to the letters in turn. Which letters have one, the server has told; to get
    // that wrong would give somebody the rank of another.
    for (const char mode : message.parameter(letters)) {
        if (mode == '+' || mode == '-') {
            isSet = mode == '+';
        } else if (holds(features.rankModes, mode)) {
            if (auto* const presence = people_.find(features.fold(parameters.next())))
                presence->ranks =
                    isSet ? presence->ranks | bitOf(mode) : presence->ranks & ~bitOf(mode);
        } else if (takesParameter(mode, isSet, features)) {
            const std::string_view mask = parameters.next();
            if (mode == 'b')
                isSet ? bans_.add(mask, features) : bans_.remove(mask, features);
        } else {
            modes_ = isSet ? modes_ | bitOf(mode) : modes_ & ~bitOf(mode);
            if (!isSet && holds(features.codelessModes, mode))
                refusesCodes_ = false;
        }
    }
}

} // namespace larkspin
