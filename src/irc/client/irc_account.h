// What the owner has asked for last about networks, and the file that keeps it for the next run.
#pragma once

#include "irc/client/irc_server_facts.h"
#include "irc/connection/irc_connection.h"

#include <optional>
#include <string>
#include <string_view>

namespace larkspin {

class KeptFiles;

struct IrcAccount {
    IrcServer server; // without a host there has been none
    std::string nick, room;
    bool isWanted = false; // connected, or trying: to be taken up again at the next start

    // A login is one server's: nothing but a connection to that host gets the password. Without a
    // host it is for whichever is next.
    std::string loginHost, user, password;
    bool keepsPassword = false;

    int linesPerMinute = 0; // that are said at most; 0 for no limit
    IrcServerFacts facts{};

    bool operator==(const IrcAccount&) const = default;
};

inline constexpr int mostLinesPerMinute = 10'000;

// Checks for texts that a file or the owner gives; one that fails its check isn't taken.
bool canBeIrcHost(std::string_view host);
bool canBeIrcNick(std::string_view nick);
bool canBeIrcWord(std::string_view word); // a channel, an account
bool canBeIrcPassword(std::string_view password);

// "SERVER", "SERVER:PORT", "[ADDRESS]:PORT". Nothing for what makes no sense.
std::optional<IrcServer> readIrcServer(std::string_view text, bool encrypted);

class IrcAccountFile {
public:
    // A line that makes no sense, or isn't known, counts as if it weren't there; one about the
    // login takes the whole login with it.
    IrcAccountFile(KeptFiles& files, std::string path);

    const IrcAccount& account() const { return account_; }

    // Writes the account if it has changed, readable by the owner alone. The password is written
    // only if he wants it kept. If the file couldn't be read before, it is read for what this
    // account lacks.
    void keep(IrcAccount account);

private:
    IrcAccount load();

    KeptFiles& files_;
    std::string path_;
    bool isRead_ = false;
    std::string written_;
    IrcAccount account_;
};

} // namespace larkspin
