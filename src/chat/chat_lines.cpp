#include "chat/chat_lines.h"

#include <cstddef>
#include <utility>

namespace larkspin {

// Whatever lay deeper has ended.
ChatLines::Work& ChatLines::atWork() {
    const auto [depth, number] = loop_.atWork();
    works_.resize(static_cast<std::size_t>(depth) + 1);
    if (works_.back().event != number)
        works_.back() = {number, {}};
    return works_.back();
}

void ChatLines::heard(const ChatLine& line, const std::string& place) {
    atWork().place = place;
    if (listener_)
        listener_(line);
    atWork().place.clear();
}

void ChatLines::said(ChatLine line, std::string place) {
    loop_.post([this, line = std::move(line), place = std::move(place)] { heard(line, place); });
    loop_.serveTurn();
}

bool ChatLines::mayBeSaidAt(const std::string& place) {
    if (loop_.atWork().depth == 0)
        return true; // a start's greeting, which is about no line
    Work& work = atWork();
    if (work.place.empty())
        work.place = place;
    return work.place == place;
}

} // namespace larkspin
