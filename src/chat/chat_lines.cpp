#include "chat/chat_lines.h"

#include <utility>

namespace larkspin {

void ChatLines::heard(const ChatLine& line, const std::string& place) {
    talk().place = place;
    if (listener_)
        listener_(line);
    talk().place.clear();
}

void ChatLines::said(ChatLine line, std::string place) {
    loop_.post([this, line = std::move(line), place = std::move(place)] { heard(line, place); });
    loop_.serveTurn();
}

bool ChatLines::mayBeSaidAt(const std::string& place) {
    if (loop_.atWork().depth == 0)
        return true; // the greeting of a start, which answers no line
    std::string& own = talk().place;
    if (own.empty())
        own = place;
    return own == place;
}

} // namespace larkspin
