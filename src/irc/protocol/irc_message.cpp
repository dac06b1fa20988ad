#include "irc/protocol/irc_message.h"

#include "text/utf8.h"

#include <algorithm>

namespace larkspin {

namespace {

constexpr std::size_t mostParameters = 15;
constexpr std::size_t longestWithoutEnd = 510;
constexpr std::string_view endsLine("\r\n\0", 3);

// Takes the first word off, and the blanks after it.
std::string_view takePart(std::string_view& rest) {
    const auto end = std::min(rest.find(' '), rest.size());
    const auto word = rest.substr(0, end);
    rest.remove_prefix(std::min(rest.find_first_not_of(' ', end), rest.size()));
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
        const auto end = std::min(text.find(';'), text.size());
        const auto tag = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const auto equals = std::min(tag.find('='), tag.size());
        if (equals > 0)
            message.tags.emplace_back(tag.substr(0, equals),
                                      tagValue(tag.substr(std::min(equals + 1, tag.size()))));
    }
}

// The command in capitals; blank if the word is no command.
std::string commandOf(std::string_view word) {
    std::string command(word);
    for (char& c : command) {
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
        else if (!(c >= 'A' && c <= 'Z') && !(c >= '0' && c <= '9'))
            return {};
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
        message.parameters.emplace_back(takePart(rest));
    }
}

std::string onOneLine(std::string_view text) {
    std::string line(text);
    std::erase_if(line, [](char c) { return endsLine.find(c) != endsLine.npos; });
    return line;
}

} // namespace

std::optional<IrcMessage> readIrcMessage(std::string_view line) {
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    IrcMessage message;
    if (line.starts_with('@'))
        readTags(takePart(line).substr(1), message);
    if (line.starts_with(':'))
        message.sender = takePart(line).substr(1);
    message.command = commandOf(takePart(line));
    if (message.command.empty())
        return std::nullopt;
    readParameters(line, message);
    return message;
}

std::string ircLine(std::string_view command, const std::vector<std::string>& parameters) {
    std::string line(command);
    for (std::size_t number = 0; number < parameters.size(); ++number) {
        std::string parameter = onOneLine(parameters[number]);
        const bool isLast = number + 1 == parameters.size();
        if (!isLast)
            parameter.resize(std::min(parameter.find(' '), parameter.size()));
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
