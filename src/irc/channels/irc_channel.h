// A channel that the owner is in, or would be in: its people with their ranks, whom it keeps out,
// its topic. It follows what the server tells.
#pragma once

#include "irc/channels/irc_bans.h"
#include "irc/channels/irc_name_list.h"
#include "irc/protocol/irc_features.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

struct IrcMessage;
struct IrcOrigin;

class IrcChannel {
public:
    explicit IrcChannel(std::string name) : name_(std::move(name)) {}

    const std::string& name() const { return name_; } // as the server writes it
    const std::string& topic() const { return topic_; }

    // In the order in which they were told of; names alone. No more than a list can hold: who comes
    // beyond that isn't listed.
    const RowList& people() const { return people_.rows(); }

    const IrcNameList& presences() const { return people_; }

    // Whom bans keep out, by what they are called.
    const RowList& ejected() const { return bans_.rows(); }
    std::vector<std::string> masksOf(std::string_view ejectedRow) const {
        return bans_.masksOf(ejectedRow);
    }
    IrcBans& bans() { return bans_; }
    const IrcBans& bans() const { return bans_; }

    bool contains(std::string_view nick, const IrcFeatures& features) const;

    // The signs of somebody's ranks, the highest one first; blank for none.
    std::string ranks(std::string_view nick, const IrcFeatures& features) const;

    // Whether that person may put others out: one of the ranks q, a, o, h.
    bool mayEject(std::string_view nick, const IrcFeatures& features) const;

    // Whether what is said here has to do without codes for how it looks: by a mode, or because the
    // server has refused them, which holds until a mode changes.
    bool isCodeless(const IrcFeatures& features) const;
    void refuseCodes(bool refuses) { refusesCodes_ = refuses; }

    // JOIN, PART, QUIT, KICK, NICK, MODE, TOPIC, and what the server answers of the topic, the
    // modes, the people and the bans, if it is about this channel. Also what is told of where its
    // people come from.
    void take(const IrcMessage& message, const IrcFeatures& features);

private:
    bool isThis(std::string_view name, const IrcFeatures& features) const;
    void takeNews(const IrcMessage& message, const IrcFeatures& features);
    void takeAnswer(const IrcMessage& message, const IrcFeatures& features);
    void takeNames(std::string_view names, const IrcFeatures& features);
    void takeName(std::string_view word, const IrcFeatures& features);
    void takeModes(const IrcMessage& message, std::size_t letters, const IrcFeatures& features);
    void learn(const IrcOrigin& told, const IrcFeatures& features);
    IrcPresence* come(std::string_view nick, const IrcFeatures& features);

    std::string name_, topic_;
    IrcNameList people_;
    IrcBans bans_;
    std::uint64_t modes_ = 0; // those without a parameter
    bool refusesCodes_ = false;
};

} // namespace larkspin
