// The masks by which a channel keeps somebody out, whatever he calls himself next.
#pragma once

#include "irc/channels/irc_name_list.h"

#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

struct IrcFeatures;

// The account's where the server knows such masks, and the host's. If others in the room come from
// that host, or a gateway's it is that brings many, the mask is narrower by the user name. The nick
// is the last resort, since it is changed in a moment: where nothing is known, or the owner or
// others behind a gateway would be kept out as well.
std::vector<std::string> ircMasksOf(std::string_view nick, std::string_view ownNick,
                                    const IrcNameList& people, const IrcFeatures& features);

// The lines that set ('+') or lift ('-') these bans.
std::vector<std::string> ircBanLines(const std::string& channel, char sign,
                                     const std::vector<std::string>& masks,
                                     const IrcFeatures& features);

} // namespace larkspin
