#include "host/window_room/said_lines.h"

#include "chat/markup.h"
#include "host/window_tree/host_bytes.h"
#include "text/characters.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

// A piece of a line is known by so many bytes at least: less than that may be a line of its own.
constexpr std::size_t shortestPiece = 20;

// Clients differ in the blanks that they show.
std::string wordsOf(std::string_view plain) {
    std::string words = toSingleByte(plain);
    std::erase_if(words, [](char byte) {
        return byte == ' ' || byte == '\xA0' || byte == '\xAD' || isControl(byte);
    });
    return words;
}

} // namespace

void SaidLines::add(SaidLine said) {
    std::string words = wordsOf(plainMarkup(said.line));
    if (words.empty())
        return;
    if (waiting_.size() == most)
        waiting_.pop_front();
    waiting_.push_back({std::move(said), std::move(words)});
}

SaidLines::Seen SaidLines::take(std::string_view text, SaidLine& said) {
    const std::string seen = wordsOf(text);
    const auto found = std::ranges::find_if(waiting_, [&](const Waiting& each) {
        return each.words == seen ||
               (seen.size() >= shortestPiece && each.words.starts_with(seen)) ||
               (each.isBegun && !seen.empty() && each.words.starts_with(seen));
    });
    if (found == waiting_.end())
        return Seen::unknown;
    const Seen how = std::exchange(found->isBegun, true) ? Seen::rest : Seen::first;
    said = found->said;
    if (found->words == seen)
        waiting_.erase(found);
    else
        found->words.erase(0, seen.size());
    return how;
}

std::optional<SaidLine> SaidLines::takeLost(Nanoseconds before) {
    for (auto each = waiting_.begin(); each != waiting_.end() && each->said.at <= before;) {
        const bool isLost = !each->isBegun;
        SaidLine said = std::move(each->said);
        each = waiting_.erase(each);
        if (isLost)
            return said;
    }
    return std::nullopt;
}

std::vector<SaidLine> SaidLines::takeUnheard(Nanoseconds since) {
    std::vector<SaidLine> unheard;
    std::erase_if(waiting_, [&](Waiting& each) {
        const SaidLine& said = each.said;
        const bool isOne = said.isPrograms && !each.isBegun && (said.isHeld || said.at >= since);
        if (isOne)
            unheard.push_back(std::move(each.said));
        return isOne;
    });
    return unheard;
}

} // namespace larkspin
