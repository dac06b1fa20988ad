#include "irc/protocol/irc_services.h"

#include "text/fold.h"
#include "text/parts.h"

#include <algorithm>
#include <string>

namespace larkspin {

static bool isIrcServiceName(std::string_view nick) {
    static constexpr std::string_view names[] = {
        "NickServ", "ChanServ",  "MemoServ", "HostServ", "BotServ",  "OperServ", "SaslServ",
        "AuthServ", "GroupServ", "HelpServ", "InfoServ", "UserServ", "Global",   "AlertServ",
    };
    return std::ranges::any_of(names,
                               [nick](std::string_view name) { return equalFolded(nick, name); });
}

// Bouncers speak through names with a star, which nobody else can have.
bool isIrcService(std::string_view sender) {
    const auto [nick, origin, isPersons] = partedAt(sender, '!');
    if (!isPersons)
        return nick.find('.') != std::string_view::npos; // a server
    const std::string host = foldCase(partedAt(origin, '@').tail);
    return nick.starts_with('*') || isIrcServiceName(nick) || host.starts_with("services.") ||
           host.starts_with("service.") || host.starts_with("cserve.");
}

} // namespace larkspin
