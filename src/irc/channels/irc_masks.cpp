#include "irc/channels/irc_masks.h"

#include "irc/protocol/irc_features.h"
#include "irc/protocol/irc_message.h"

#include <algorithm>

namespace larkspin {

namespace {

// A ban may fit others as well where the mask can't be put more exactly: "?" stands for what would
// be a wildcard, or takes back the meaning of one, on some server, and for what ends a name.
constexpr std::string_view unfitInMasks = "*?!@\\#$,";

// Before a nick these would make the mask one of another kind.
constexpr std::string_view unfitInNicks = "~:%";

std::string fitted(std::string_view text, std::string_view moreUnfit = {}) {
    std::string mask(text);
    for (char& c : mask)
        if (static_cast<unsigned char>(c) <= ' ' || unfitInMasks.find(c) != unfitInMasks.npos ||
            moreUnfit.find(c) != moreUnfit.npos)
            c = '?';
    return mask;
}

// A host under which everybody comes who uses it.
bool bringsMany(std::string_view host) {
    static constexpr std::string_view gateways[] = {"gateway", "webchat",  "mibbit", "kiwiirc",
                                                    "cgiirc",  "irccloud", "matrix"};
    return std::ranges::any_of(gateways,
                               [&](std::string_view part) { return host.find(part) != host.npos; });
}

std::string hostMaskOf(const IrcPresence& person, const IrcPresence* owner,
                       const IrcNameList& people) {
    const std::string &user = person.user, &host = person.host;
    if (host.empty())
        return {};
    if (!bringsMany(host) && people.countFrom(host) == 1)
        return "*!*@" + fitted(host);
    const bool isOwners = owner && owner->host == host && owner->user == user;
    if (user.empty() || isOwners || (bringsMany(host) && people.countFrom(host, user) > 1))
        return {};
    return "*!" + fitted(user) + '@' + fitted(host);
}

} // namespace

std::vector<std::string> ircMasksOf(std::string_view nick, std::string_view ownNick,
                                    const IrcNameList& people, const IrcFeatures& features) {
    std::vector<std::string> masks;
    const IrcPresence* const owner = people.find(features.fold(ownNick));
    if (const IrcPresence* const presence = people.find(features.fold(nick))) {
        if (!features.accountMask.empty() && presence->hasAccount())
            masks.push_back(features.accountMask + fitted(presence->account));
        if (std::string mask = hostMaskOf(*presence, owner, people); !mask.empty())
            masks.push_back(std::move(mask));
    }
    if (masks.empty())
        masks.push_back(fitted(nick, unfitInNicks) + "!*@*");
    return masks;
}

std::vector<std::string> ircBanLines(const std::string& channel, char sign,
                                     const std::vector<std::string>& masks,
                                     const IrcFeatures& features) {
    constexpr std::size_t longest = 400; // bytes of masks in a line
    std::vector<std::string> lines;
    for (std::size_t next = 0; next < masks.size();) {
        std::vector<std::string> parameters{channel, std::string(1, sign)};
        std::size_t size = 0;
        do {
            size += masks[next].size();
            parameters[1] += 'b';
            parameters.push_back(masks[next++]);
        } while (next < masks.size() && parameters[1].size() <= features.modesInLine &&
                 size + masks[next].size() <= longest);
        lines.push_back(ircLine("MODE", parameters));
    }
    return lines;
}

} // namespace larkspin
