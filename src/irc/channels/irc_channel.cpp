#include "irc/channels/irc_channel.h"

#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_numerics.h"
#include "text/typed_words.h"

#include <algorithm>

namespace larkspin {

namespace {

// Ranks are kept by their mode letters, so that they hold whatever the server says of them later.
std::uint64_t bitOf(char mode) {
    if (mode >= 'a' && mode <= 'z')
        return std::uint64_t(1) << (mode - 'a');
    if (mode >= 'A' && mode <= 'Z')
        return std::uint64_t(1) << (mode - 'A' + 26);
    return 0;
}

bool holds(const std::string& modes, char mode) {
    return modes.find(mode) != modes.npos;
}

// The parameters of modes: words, also where a message has more of them than are kept apart.
class Parameters {
public:
    explicit Parameters(const IrcMessage& message) : message_(message) {}

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
    std::size_t number_ = 2; // after the channel and the letters
    std::string_view rest_;
};

bool takesParameter(char mode, bool isSet, const IrcFeatures& features) {
    return holds(features.listModes, mode) || holds(features.parameterModes, mode) ||
           (isSet && holds(features.setParameterModes, mode));
}

} // namespace

bool IrcChannel::contains(std::string_view nick, const IrcFeatures& features) const {
    return people_.ranks(features.fold(nick)) != nullptr;
}

std::string IrcChannel::ranks(std::string_view nick, const IrcFeatures& features) const {
    std::string signs;
    if (const auto* const ranks = people_.ranks(features.fold(nick)))
        for (std::size_t rank = 0; rank < features.rankModes.size(); ++rank)
            if (*ranks & bitOf(features.rankModes[rank]))
                signs += features.rankSigns[rank];
    return signs;
}

bool IrcChannel::mayEject(std::string_view nick, const IrcFeatures& features) const {
    constexpr std::string_view modes = "qaoh";
    const auto* const ranks = people_.ranks(features.fold(nick));
    return ranks &&
           std::ranges::any_of(modes, [&](char mode) { return (*ranks & bitOf(mode)) != 0; });
}

bool IrcChannel::isThis(std::string_view name, const IrcFeatures& features) const {
    return name.size() == name_.size() && features.fold(name) == features.fold(name_);
}

bool IrcChannel::take(const IrcMessage& message, const IrcFeatures& features) {
    const std::string& command = message.command;
    if (command == "QUIT")
        return people_.remove(features.fold(message.nick()));
    if (command == "NICK")
        return people_.rename(features.fold(message.nick()), features.fold(message.parameter(0)),
                              message.parameter(0));
    if (command == numeric::names)
        return isThis(message.parameter(2), features) && takeNames(message.parameter(3), features);
    const bool isNumeric = numeric::isNumeric(command);
    if (!isThis(message.parameter(isNumeric ? 1 : 0), features))
        return false;
    return isNumeric ? takeNumber(message, features) : takeNews(message, features);
}

bool IrcChannel::takeNews(const IrcMessage& message, const IrcFeatures& features) {
    const std::string& command = message.command;
    if (command == "JOIN")
        return come(message.nick(), 0, features);
    if (command == "PART")
        return people_.remove(features.fold(message.nick()));
    if (command == "KICK")
        return people_.remove(features.fold(message.parameter(1)));
    if (command == "TOPIC")
        return setTopic(message.parameter(1));
    return command == "MODE" && takeModes(message, features);
}

bool IrcChannel::takeNumber(const IrcMessage& message, const IrcFeatures& features) {
    if (message.command == numeric::ban)
        return bans_.add(message.parameter(2), features);
    if (message.command == numeric::topic)
        return setTopic(message.parameter(2));
    return message.command == numeric::noTopic && setTopic("");
}

bool IrcChannel::setTopic(std::string_view topic) {
    const bool isNew = topic != topic_;
    topic_ = topic;
    return isNew;
}

bool IrcChannel::come(std::string_view nick, std::uint64_t ranks, const IrcFeatures& features) {
    const std::string folded = features.fold(nick);
    const bool isNew = people_.add(folded, nick);
    return setRanks(folded, ranks) || isNew;
}

bool IrcChannel::setRanks(const std::string& folded, std::uint64_t ranks) {
    std::uint64_t* const known = people_.ranks(folded);
    return known && std::exchange(*known, ranks) != ranks;
}

// "@+ann bob carol!user@host"
bool IrcChannel::takeNames(std::string_view names, const IrcFeatures& features) {
    bool changes = false;
    for (std::string_view word; !(word = takeWord(names)).empty();)
        changes |= takeName(word, features);
    return changes;
}

// A server that shows one sign alone shows the highest; what is known of the lower ones holds.
bool IrcChannel::takeName(std::string_view word, const IrcFeatures& features) {
    const auto signs = std::min(word.find_first_not_of(features.rankSigns), word.size());
    const std::string_view shown = word.substr(0, signs);
    const std::string_view name = word.substr(signs, word.find('!', signs) - signs);
    const auto* const known = people_.ranks(features.fold(name));
    std::uint64_t ranks = 0;
    for (std::size_t rank = 0; rank < features.rankModes.size(); ++rank) {
        const std::uint64_t bit = bitOf(features.rankModes[rank]);
        if (shown.find(features.rankSigns[rank]) != shown.npos || (ranks && known && *known & bit))
            ranks |= bit;
    }
    return come(name, ranks, features);
}

bool IrcChannel::takeModes(const IrcMessage& message, const IrcFeatures& features) {
    Parameters parameters(message);
    bool isSet = true, changes = false;
    for (const char mode : message.parameter(1)) {
        if (mode == '+' || mode == '-') {
            isSet = mode == '+';
        } else if (holds(features.rankModes, mode)) {
            const std::string folded = features.fold(parameters.next());
            const auto* const known = people_.ranks(folded);
            const std::uint64_t others = known ? *known & ~bitOf(mode) : 0;
            changes |= setRanks(folded, others | (isSet ? bitOf(mode) : 0));
        } else if (takesParameter(mode, isSet, features)) {
            const std::string_view mask = parameters.next();
            if (mode == 'b')
                changes |= isSet ? bans_.add(mask, features) : bans_.remove(mask, features);
        }
    }
    return changes;
}

} // namespace larkspin
