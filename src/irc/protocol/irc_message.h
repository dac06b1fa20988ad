// One line of the IRC protocol, taken apart and put together.
#pragma once

#include "text/parts.h"

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

    std::string_view nick() const { return partedAt(sender, '!').head; }

    // Blank where there is none. Counted from 0.
    std::string_view parameter(std::size_t number) const {
        return number < parameters.size() ? std::string_view(parameters[number])
                                          : std::string_view();
    }

    // The value of that tag; blank where there is none. Of several the last one counts.
    std::string_view tag(std::string_view name) const {
        for (auto tag = tags.rbegin(); tag != tags.rend(); ++tag)
            if (tag->first == name)
                return tag->second;
        return {};
    }
};

// Reads a line without its end. Nothing for a line that holds no command. Fifteen parameters are
// kept apart; the last of them holds the rest.
std::optional<IrcMessage> readIrcMessage(std::string_view line);

// Makes a line, with its end. Control characters that would end the line are left out, and so is
// everything after a blank in any parameter but the last one, so that no parameter can become a
// second line or another parameter. A parameter that can only be the last one, because it is empty
// or begins with a colon, makes no line in another place: the text is empty then. What goes beyond
// the 512 bytes that servers take is left out.
std::string ircLine(std::string_view command, const std::vector<std::string>& parameters = {});

} // namespace larkspin
