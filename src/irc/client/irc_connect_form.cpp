#include "irc/client/irc_connect_form.h"

#include "irc/client/irc_networks.h"
#include "text/fold.h"
#include "text/typed_words.h"
#include "text/visible.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

namespace {

constexpr std::string_view joining = "/join "; // on connecting, the rooms after the first one

// The port may stand in the server's field, as it does after the word. It is meant then.
std::optional<IrcServer> serverOf(const IrcConnectForm& form) {
    const bool isBareAddress =
        !form.host.starts_with('[') && std::ranges::count(form.host, ':') > 1;
    const std::string host = isBareAddress ? '[' + form.host + ']' : form.host;
    auto server = readIrcServer(host, form.encrypted);
    const auto address = host.rfind(']');
    if (server && host.find(':', address == host.npos ? 0 : address) == host.npos)
        server->port = static_cast<std::uint16_t>(form.port);
    return server;
}

std::vector<std::string> roomsOf(const IrcConnectForm& form) {
    std::vector<std::string> rooms;
    std::string parted = form.rooms;
    std::ranges::replace(parted, ',', ' '); // no room's name holds one
    std::string_view rest = parted;
    for (std::string_view room = takeWord(rest); !room.empty(); room = takeWord(rest))
        rooms.emplace_back(room);
    return rooms;
}

IrcNetwork* knownOne(const IrcNetworks& networks, const IrcConnectForm& form) {
    return networks.named(form.network.empty() ? form.host : form.network);
}

// The lines about rooms become those for these; others stay.
void joinOnConnecting(IrcServerFacts& facts, const std::string& host,
                      const std::vector<std::string>& rooms) {
    std::vector<std::string> lines = facts.all(IrcFact::onConnect, host);
    std::erase_if(lines, [](const std::string& line) { return line.starts_with(joining); });
    for (const std::string& room : rooms)
        lines.push_back(std::string(joining) + room);
    facts.set(IrcFact::onConnect, host, "");
    for (const std::string& line : lines)
        facts.add(IrcFact::onConnect, host, line);
}

void takeLogin(IrcAccount& account, const IrcConnectForm& form) {
    const bool isAnother = account.user != form.user;
    account.user = form.user;
    account.keepsPassword = form.keepsPassword;
    account.loginHost = form.user.empty() ? "" : form.host;
    if (isAnother || !form.password.empty())
        account.password = form.password;
}

} // namespace

IrcConnectForm connectFormOf(const IrcNetwork& network) {
    const IrcAccount& account = network.file.account();
    IrcConnectForm form{.network = account.name,
                        .host = account.server.host,
                        .port = account.server.port,
                        .encrypted = account.server.encrypted,
                        .nick = account.nick,
                        .rooms = account.room,
                        .user = account.user,
                        .keepsPassword = account.keepsPassword,
                        .atStart = account.isForStart};
    for (const std::string& line : account.facts.all(IrcFact::onConnect, account.server.host))
        if (line.starts_with(joining))
            form.rooms += (form.rooms.empty() ? "" : " ") + line.substr(joining.size());
    return form;
}

std::string problemOf(const IrcConnectForm& form) {
    if (!serverOf(form))
        return form.host.empty() ? "which server?"
                                 : visibleName(form.host) + " can't be a server's name";
    if (!canBeIrcNick(form.nick))
        return form.nick.empty() ? "which name do you want there?"
                                 : visibleName(form.nick) + " can't be a name there";
    if (!form.network.empty() && !canBeIrcWord(form.network))
        return visibleName(form.network) + " can't be a network's name: it has no blanks";
    for (const std::string& room : roomsOf(form))
        if (!canBeIrcWord(room))
            return visibleName(room) + " can't be a room";
    if (!form.user.empty() && !canBeIrcWord(form.user))
        return visibleName(form.user) + " can't be an account";
    if (!form.password.empty() && form.user.empty())
        return "the password of which account?";
    if (!form.password.empty() && !canBeIrcPassword(form.password))
        return "this can't be a password";
    return {};
}

std::string connectBy(IrcNetworks& networks, const IrcConnectForm& filledIn) {
    const std::string problem = problemOf(filledIn);
    if (!problem.empty())
        return problem;
    IrcConnectForm form = filledIn;
    const IrcServer server = *serverOf(form);
    form.host = server.host;
    std::vector<std::string> rooms = roomsOf(form);
    const std::string first = rooms.empty() ? "" : rooms.front();
    if (!rooms.empty())
        rooms.erase(rooms.begin());
    IrcNetwork* const known = knownOne(networks, form);
    IrcNetwork& network = known ? *known : *networks.all().back();
    IrcAccount account = network.file.account();
    takeLogin(account, form);
    joinOnConnecting(account.facts, form.host, rooms);
    account.isForStart = form.atStart;
    network.file.keep(std::move(account));
    const bool goes = networks.connect(
        {.server = server, .nick = form.nick, .room = first, .name = form.network});
    return goes ? "" : "larkspin knows no more networks: /networks forget NAME makes room";
}

} // namespace larkspin
