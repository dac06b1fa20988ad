#include "irc/protocol/irc_message.h"

#include "text/characters.h"
#include "text/line_breaks.h"
#include "text/parts.h"
#include "text/utf8.h"

#include <algorithm>

namespace larkspin {

namespace {

constexpr std::size_t mostParameters = 15;
constexpr std::size_t longestWithoutEnd = 510;

// Takes the first word off, and the blanks after it.
std::string_view takeWordAndBlanks(std::string_view& rest) {
    const std::string_view word = partedAt(rest, ' ').head;
    rest.remove_prefix(std::min(rest.find_first_not_of(' ', word.size()), rest.size()));
    return word;
}

// The value as it is meant: "\:" is a semicolon, "\s" a blank, "\r" and "\n" are line ends, and any
// other character after a backslash is itself.
std::string tagValue(std::string_view escaped) {
    std::string value;
    for (std::size_t at = 0; at < escaped.size(); ++at) {
        if (escaped[at] != '\\') {
            value += escaped[at];
            continue;
        }
        if (++at == escaped.size())
            break;
        constexpr std::string_view codes = ":srn", meant = "; \r\n";
        const auto code = codes.find(escaped[at]);
        value += code == codes.npos ? escaped[at] : meant[code];
    }
    return value;
}

void readTags(std::string_view text, IrcMessage& message) {
    while (!text.empty()) {
        const auto [key, value, hasValue] = partedAt(takePart(text, ';'), '=');
        if (!key.empty())
            message.tags.emplace_back(key, tagValue(value));
    }
}

// The command in capitals; blank if the word is no command.
std::string commandOf(std::string_view word) {
    std::string command(word);
    for (char& c : command) {
        if (!isLetter(c) && !isDigit(c))
            return {};
        c = capitalAscii(c);
    }
    return command;
}

void readParameters(std::string_view rest, IrcMessage& message) {
    while (!rest.empty()) {
        const bool isRest = rest.front() == ':';
        if (isRest || message.parameters.size() + 1 == mostParameters) {
            message.parameters.emplace_back(rest.substr(isRest ? 1 : 0));
            return;
        }
        message.parameters.emplace_back(takeWordAndBlanks(rest));
    }
}

} // namespace

std::optional<IrcMessage> readIrcMessage(std::string_view line) {
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    IrcMessage message;
    if (line.starts_with('@'))
        readTags(takeWordAndBlanks(line).substr(1), message);
    if (line.starts_with(':'))
        message.sender = takeWordAndBlanks(line).substr(1);
    message.command = commandOf(takeWordAndBlanks(line));
    if (message.command.empty())
        return std::nullopt;
    readParameters(line, message);
    return message;
}

std::string ircLine(std::string_view command, const std::vector<std::string>& parameters) {
    std::string line(command);
    for (std::size_t number = 0; number < parameters.size(); ++number) {
        std::string parameter = withoutBreaks(parameters[number], lineBreaksAndNul);
        const bool isLast = number + 1 == parameters.size();
        if (!isLast)
            parameter.resize(partedAt(parameter, ' ').head.size());
        // Only the last parameter can be marked by a colon, after which it may be anything.
        const bool needsMark = parameter.empty() || parameter.front() == ':' ||
                               parameter.find(' ') != std::string::npos;
        if (needsMark && !isLast)
            return {};
        line += needsMark ? " :" : " ";
        line += parameter;
    }
    line.resize(fittingLength(line, longestWithoutEnd));
    return line + "\r\n";
}

} // namespace larkspin
