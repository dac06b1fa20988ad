#include "irc/connection/traced_connection.h"

#include "shell/trace.h"
#include "text/blanks.h"
#include "text/typed_words.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t longestBeginning = 600; // what tells of a line stands there

bool isOneOf(std::string_view command, std::initializer_list<std::string_view> others) {
    return std::ranges::find(others, command) != others.end();
}

bool isNumber(std::string_view command) {
    return !command.empty() && command.front() >= '0' && command.front() <= '9';
}

// How many of the parameters are told. A key stands after the channel, a number's text last.
std::size_t toldParameters(std::string_view command) {
    constexpr std::size_t all = 99;
    if (isOneOf(command, {"PING", "PONG", "CAP", "ERROR", "NICK", "USER"}))
        return all;
    if (command == "696") // a refused mode, with its parameter, which may be a key
        return 3;
    if (isNumber(command))
        return command.front() >= '4' ? all : 2;
    if (command == "MODE")
        return 2;
    return isOneOf(command, {"JOIN", "PART", "KICK", "TOPIC", "INVITE"}) ? 1 : 0;
}

// Without its tags and who has sent it.
std::string_view withoutPrefix(std::string_view line) {
    for (const char sign : {'@', ':'}) {
        if (line.starts_with(sign))
            takeWord(line);
        line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    }
    return line;
}

} // namespace

void TracedConnection::open(const IrcServer& server, Events events) {
    trace_.note("network: opens", server.host);
    begun_.clear();
    events_ = std::move(events);
    connection_->open(server, {.opened =
                                   [this] {
                                       trace_.note("network: is open");
                                       events_.opened();
                                   },
                               .received =
                                   [this](std::string_view bytes) {
                                       hear(bytes);
                                       events_.received(bytes);
                                   },
                               .ended =
                                   [this](const std::string& why) {
                                       trace_.note("network: has ended,", why);
                                       events_.ended(why);
                                   },
                               .distrusted =
                                   [this](const IrcCertificate& certificate) {
                                       trace_.note("network: doesn't trust",
                                                   certificate.fingerprint);
                                       if (events_.distrusted)
                                           events_.distrusted(certificate);
                                   }});
}

void TracedConnection::close() {
    trace_.note("network: closes");
    connection_->close();
}

void TracedConnection::send(std::string_view bytes) {
    for (std::string_view rest = bytes; !rest.empty();) {
        const auto end = std::min(rest.find('\n'), rest.size());
        note("network: sent", rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    connection_->send(bytes);
}

void TracedConnection::hear(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto end = std::min(bytes.find('\n'), bytes.size());
        const std::string_view piece = bytes.substr(0, end);
        const bool isWhole = end < bytes.size();
        if (!begun_.empty() || !isWhole)
            begun_ += piece.substr(0, longestBeginning - std::min(begun_.size(), longestBeginning));
        if (isWhole) {
            note("network: got", begun_.empty() ? piece : std::string_view(begun_));
            begun_.clear();
        }
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
}

void TracedConnection::note(const char* direction, std::string_view line) {
    std::string_view rest = withoutPrefix(line.substr(0, line.find('\r')));
    const std::string_view command = takeWord(rest);
    if (command.empty())
        return;
    // What is said, who is there, and a server's message of the day come in floods.
    if (isOneOf(command, {"PRIVMSG", "NOTICE", "353", "372"}))
        return;
    const std::string_view parameters = rest;
    for (std::size_t number = toldParameters(command); number > 0; --number)
        takeWord(rest);
    trace_.note(direction, command,
                withoutBlanks(parameters.substr(0, parameters.size() - rest.size())));
}

} // namespace larkspin
