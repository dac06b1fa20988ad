#include "platform/terminal/terminal_room.h"

#include <optional>

namespace larkspin {

namespace {

std::optional<ChatLine> saidAs(const std::string& line) {
    constexpr std::string_view word = "/as ";
    const auto blank = line.find(' ', word.size());
    if (!line.starts_with(word) || blank == word.size() || blank == std::string::npos)
        return std::nullopt;
    return ChatLine{line.substr(word.size(), blank - word.size()), line.substr(blank + 1)};
}

} // namespace

void TerminalRoom::sendChatLine(const std::string& line) {
    screen_.showLine(screenName_, line);
    loop_.post([this, line] { hear_({screenName_, line}); });
    loop_.serveTurn();
}

void TerminalRoom::typed(const std::string& line, bool isShown) {
    if (const auto other = saidAs(line)) {
        screen_.showLine(other->speaker, other->text);
        hear_(*other);
        return;
    }
    if (!isShown)
        screen_.showLine(screenName_, line);
    hear_({screenName_, line});
}

} // namespace larkspin
