// One line of the IRC protocol, taken apart and put together.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

struct IrcMessage {
    std::vector<std::pair<std::string, std::string>> tags; // with their values as they are meant
    std::string sender;                                    // "nick!user@host", or a server; or ""
    std::string command;                                   // in capitals, or a number
    std::vector<std::string> parameters;

    std::string_view nick() const { return std::string_view(sender).substr(0, sender.find('!')); }

    // Blank where there is none. Counted from 0.
    std::string_view parameter(std::size_t number) const {
        return number < parameters.size() ? std::string_view(parameters[number]) : "";
    }
};

// Without its line end. Nothing for a line that holds no command. Fifteen parameters are kept
// apart; the last of them is the rest.
std::optional<IrcMessage> readIrcMessage(std::string_view line);

// With its line end. Control characters that would end the line are left out of it, and so is what
// stands after a blank in any parameter but the last one: no parameter can become a second line or
// another parameter. A parameter that only the last one can be, empty or with a colon in front,
// makes no line elsewhere: nothing. What is beyond the 512 bytes that servers take is left out.
std::string ircLine(std::string_view command, const std::vector<std::string>& parameters = {});

} // namespace larkspin
