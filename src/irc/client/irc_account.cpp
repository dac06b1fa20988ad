#include "irc/client/irc_account.h"

#include "text/characters.h"
#include "text/number.h"
#include "text/parts.h"

#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t longestHost = 255, longestWord = 200;
constexpr std::size_t longestPassword = 500;
constexpr std::uint16_t portByTls = 6697, plainPort = 6667;

// One line of the file. False for a value that makes no sense.
bool take(IrcAccount& account, std::string_view key, std::string_view value) {
    const auto text = [&](std::string& field, bool canBe) {
        field = value;
        return canBe || value.empty();
    };
    const auto yes = [&](bool& field) {
        field = value == "yes";
        return field || value == "no";
    };
    if (key == "server")
        return text(account.server.host, canBeIrcHost(value));
    if (key == "tls")
        return yes(account.server.encrypted);
    if (key == "nick")
        return text(account.nick, canBeIrcNick(value));
    if (key == "room")
        return text(account.room, canBeIrcWord(value));
    if (key == "at start")
        return yes(account.isForStart);
    if (key == "connect")
        return yes(account.isWanted);
    if (key == "login server")
        return text(account.loginHost, canBeIrcHost(value));
    if (key == "login")
        return text(account.user, canBeIrcWord(value));
    if (key == "password") {
        // A password stands in the file only if the owner wanted it kept.
        account.keepsPassword = true;
        return text(account.password, canBeIrcPassword(value));
    }
    if (key == "port") {
        const auto number = plainNumber(value, 1, 65535);
        account.server.port = static_cast<std::uint16_t>(number.value_or(0));
        return number.has_value();
    }
    account.facts.takeLine(key, value);
    return true;
}

} // namespace

bool takeIrcLine(IrcAccount& account, std::string_view key, std::string_view value) {
    // A line that makes no sense must change nothing, so it is tried on a copy.
    IrcAccount more = account;
    if (!take(more, key, value))
        return false;
    account = std::move(more);
    return true;
}

std::string ircLines(const IrcAccount& account) {
    std::string text;
    const auto line = [&text](const char* key, const std::string& value) {
        if (!value.empty())
            text.append(key).append("=").append(value).append("\n");
    };
    const auto yes = [](bool is) { return std::string(is ? "yes" : "no"); };
    if (!account.server.host.empty()) {
        line("server", account.server.host);
        line("port", std::to_string(account.server.port));
        line("tls", yes(account.server.encrypted));
        line("nick", account.nick);
        line("room", account.room);
        line("connect", yes(account.isWanted));
        line("at start", account.isForStart ? "" : "no");
    }
    if (!account.user.empty()) {
        line("login server", account.loginHost);
        line("login", account.user);
        // The password is written only if the owner wants it kept.
        line("password", account.keepsPassword ? account.password : "");
    }
    return text + account.facts.lines();
}

// The server with its nick and room, and the login with its host and password, are each taken as a
// whole or not at all, since their parts belong together.
void addWhatIsLacking(IrcAccount& account, const IrcAccount& other) {
    if (account.server.host.empty()) {
        account.server = other.server;
        account.nick = other.nick;
        account.room = other.room;
        account.isWanted = other.isWanted;
        account.isForStart = other.isForStart;
    }
    if (account.user.empty()) {
        account.loginHost = other.loginHost;
        account.user = other.user;
        account.password = other.password;
        account.keepsPassword = other.keepsPassword;
    }
    account.facts.addWhatIsLacking(other.facts);
}

bool canBeIrcHost(std::string_view host) {
    constexpr std::string_view others = "[]/@ ";
    return !host.empty() && host.size() <= longestHost && !hasControls(host) &&
           host.find_first_of(others) == host.npos;
}

bool canBeIrcNick(std::string_view nick) {
    // A server takes a parameter that begins with one of these not for a nick but for a channel, a
    // mask, or the rest of the line.
    constexpr std::string_view noFirst = ":#&+$", others = "!@*?";
    return canBeIrcWord(nick) && noFirst.find(nick.front()) == noFirst.npos &&
           nick.find_first_of(others) == nick.npos;
}

bool canBeIrcWord(std::string_view word) {
    return !word.empty() && word.size() <= longestWord && !hasControls(word) &&
           word.find_first_of(" ,") == word.npos;
}

bool canBeIrcPassword(std::string_view password) {
    return !password.empty() && password.size() <= longestPassword && !hasControls(password);
}

std::optional<IrcServer> readIrcServer(std::string_view text, bool encrypted) {
    IrcServer server{"", encrypted ? portByTls : plainPort, encrypted};
    // An IPv6 address stands in brackets, since it holds colons itself.
    if (text.starts_with('[')) {
        const auto [host, rest, isClosed] = partedAt(text, ']');
        server.host = isClosed ? host.substr(1) : std::string_view();
        text = rest;
    } else {
        server.host = partedAt(text, ':').head;
        text.remove_prefix(server.host.size());
    }
    if (!canBeIrcHost(server.host))
        return std::nullopt;
    if (text.empty())
        return server;
    const auto port = plainNumber(text.substr(1), 1, 65535);
    if (text.front() != ':' || !port)
        return std::nullopt;
    server.port = static_cast<std::uint16_t>(*port);
    return server;
}

} // namespace larkspin
