// What the owner has asked for about a network, as it is kept for the next run.
#pragma once

#include "irc/client/irc_server_facts.h"
#include "irc/connection/irc_connection.h"

#include <optional>
#include <string>
#include <string_view>

namespace larkspin {

struct IrcAccount {
    std::string name; // of the network; blank for its host's
    IrcServer server; // without a host there has been none
    std::string nick, room;
    bool isWanted = false;  // connected, or trying: to be taken up again at the next start
    bool isForStart = true; // if not, only when the owner asks for it

    // A login is one server's: nothing but a connection to that host gets the password. Without a
    // host it is for whichever is next.
    std::string loginHost, user, password;
    bool keepsPassword = false;

    IrcServerFacts facts{};

    const std::string& network() const { return name.empty() ? server.host : name; }

    bool operator==(const IrcAccount&) const = default;
};

// Checks for texts that a file or the owner gives; one that fails its check isn't taken.
bool canBeIrcHost(std::string_view host);
bool canBeIrcNick(std::string_view nick);
bool canBeIrcWord(std::string_view word); // a channel, an account
bool canBeIrcPassword(std::string_view password);

// "SERVER", "SERVER:PORT", "[ADDRESS]:PORT". Nothing for what makes no sense.
std::optional<IrcServer> readIrcServer(std::string_view text, bool encrypted);

// As a file has it, a line each. A line that makes no sense changes nothing, and is false then; one
// that isn't known is let be.
bool takeIrcLine(IrcAccount& account, std::string_view key, std::string_view value);
std::string ircLines(const IrcAccount& account);

// Takes from another one what this lacks.
void addWhatIsLacking(IrcAccount& account, const IrcAccount& other);

} // namespace larkspin
