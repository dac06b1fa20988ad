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

// The greeting of a start answers no line, and is said outside of any event.
void ChatLines::speaksAt(const std::string& place) {
    if (loop_.atWork().depth > 0 && talk().place.empty())
        talk().place = place;
}

} // namespace larkspin
