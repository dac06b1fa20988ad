#include "host/passed_lines.h"

#include "host/conversations.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace larkspin {

void PassedLines::keep(const Conversation& shownIn, PassedLine line) {
    auto& lines = byPlace_[shownIn.place()];
    lines.push_back(std::move(line));
    const auto bytes = [&lines] {
        std::size_t all = 0;
        for (const PassedLine& each : lines)
            all += each.words.size();
        return all;
    };
    while (lines.size() > mostLines || bytes() > mostBytes)
        lines.pop_front();
}

// An old line that was put in among others has a high number, so what counts is the least one from
// there on.
std::vector<PassedLines::Placed> PassedLines::among(const Conversation& conversation,
                                                    std::size_t first, std::size_t end) const {
    std::vector<Placed> placed;
    const auto kept = byPlace_.find(conversation.place());
    if (kept == byPlace_.end())
        return placed;
    const auto& lines = conversation.lines();
    std::uint64_t least = std::numeric_limits<std::uint64_t>::max();
    std::size_t index = lines.size();
    for (auto line = kept->second.rbegin(); line != kept->second.rend(); ++line) {
        while (index > 0 && std::min(least, lines[index - 1].number) > line->number)
            least = std::min(least, lines[--index].number);
        const bool isAfterAll = index == lines.size() && end == index;
        if (isAfterAll || (first <= index && index < end))
            placed.push_back({index, *line});
    }
    std::ranges::reverse(placed);
    return placed;
}

void PassedLines::dropGone(const Conversations& conversations) {
    std::erase_if(byPlace_, [&](const auto& each) { return !conversations.find(each.first); });
}

} // namespace larkspin
