#include "text/text_set.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t fewestPlaces = 16;
constexpr std::size_t fetchedAhead = 8; // texts: about as many as memory brings at once

} // namespace

std::uint32_t TextSet::markOf(std::string_view text) {
    return static_cast<std::uint32_t>(std::hash<std::string_view>()(text));
}

// Where the text is, or else the free place at which it belongs.
std::size_t TextSet::placeOf(std::string_view text, std::uint32_t mark) const {
    const std::size_t last = entries_.size() - 1;
    std::size_t place = mark & last;
    for (; entries_[place].start; place = (place + 1) & last)
        if (entries_[place].mark == mark && entries_[place].text() == text)
            break;
    return place;
}

void TextSet::insert(std::string_view text) {
    if (2 * (count_ + 1) > entries_.size())
        grow();
    const std::uint32_t mark = markOf(text);
    Entry& entry = entries_[placeOf(text, mark)];
    if (entry.start)
        return;
    entry = {.start = text.empty() ? "" : text.data(),
             .size = static_cast<std::uint32_t>(text.size()),
             .mark = mark};
    ++count_;
}

bool TextSet::contains(std::string_view text) const {
    return count_ > 0 && entries_[placeOf(text, markOf(text))].start;
}

std::vector<bool> TextSet::containsEach(const std::vector<std::string_view>& texts) const {
    std::vector<bool> found(texts.size());
    if (count_ == 0)
        return found;
    std::vector<std::uint32_t> marks(texts.size());
    std::ranges::transform(texts, marks.begin(), markOf);
    const auto entryOf = [&](std::size_t at) {
        return &entries_[marks[std::min(at, marks.size() - 1)] & (entries_.size() - 1)];
    };
    for (std::size_t at = 0; at < texts.size(); ++at) {
        __builtin_prefetch(entryOf(at + 2 * fetchedAhead));
        __builtin_prefetch(entryOf(at + fetchedAhead)->start);
        found[at] = entries_[placeOf(texts[at], marks[at])].start;
    }
    return found;
}

// No two of them are the same, so their texts needn't be looked at.
void TextSet::grow() {
    const std::vector<Entry> old =
        std::exchange(entries_, std::vector<Entry>(std::max(fewestPlaces, 2 * entries_.size())));
    const std::size_t last = entries_.size() - 1;
    for (const Entry& entry : old) {
        if (!entry.start)
            continue;
        std::size_t place = entry.mark & last;
        while (entries_[place].start)
            place = (place + 1) & last;
        entries_[place] = entry;
    }
}

} // namespace larkspin
