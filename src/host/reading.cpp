#include "host/reading.h"

#include "host/conversations.h"
#include "host/name_color.h"
#include "host/new_lines.h"
#include "shell/event_loop.h"

#include <algorithm>
#include <utility>

namespace larkspin {

Reading::Reading(const Conversations& conversations, const EventLoop& loop)
    : conversations_(conversations), loop_(loop), shown_(conversations.front().place()) {}

const Conversation* Reading::shown() const {
    return conversations_.find(shown_);
}

void Reading::leave(const Spot& spot) {
    left_[shown_] = {spot, seenUpTo_};
    std::erase_if(left_, [this](const auto& left) { return !conversations_.find(left.first); });
    passed_.dropGone(conversations_);
}

const Reading::Spot& Reading::enter(const Conversation& conversation) {
    shown_ = conversation.place();
    const Left& left = left_[shown_];
    seenUpTo_ = left.seenUpTo;
    return left.spot;
}

void Reading::markUnread(const Conversation& conversation) {
    const auto& lines = conversation.lines();
    const std::size_t unread = conversation.firstUnread();
    mark_ = unread < lines.size() ? lines[unread].number : 0;
}

int Reading::countBelow() const {
    const Conversation* const conversation = shown();
    return conversation ? conversation->linesAfter(seenUpTo_) : 0;
}

ShownLine Reading::pass(const Conversation& from, const KeptLine& line) {
    const PassedLine passed{line.number, line.at, wordsFromElsewhere(conversations_, from, line)};
    passed_.keep(conversations_.front(), passed);
    return this->line(passed);
}

bool Reading::stamp(bool stamps) {
    return std::exchange(stamps_, stamps) != stamps;
}

bool Reading::colorNames(bool colors) {
    return std::exchange(colorsNames_, colors) != colors;
}

std::vector<ShownLine> Reading::lines(const Conversation& conversation, std::size_t first,
                                      std::size_t end) const {
    std::vector<ShownLine> all;
    const auto passed = passed_.among(conversation, first, end);
    auto next = passed.begin();
    const auto addPassed = [&](std::size_t before) {
        for (; next != passed.end() && next->before == before; ++next)
            all.push_back(line(next->line));
    };
    for (std::size_t index = first; index < end; ++index) {
        const KeptLine& kept = conversation.lines()[index];
        addPassed(index);
        if (kept.number == mark_)
            all.push_back({.look = ShownLine::Look::mark, .text = "unread"});
        all.push_back(line(conversation, kept));
    }
    addPassed(end);
    return all;
}

ShownLine Reading::line(const Conversation& conversation, const KeptLine& line) const {
    using Look = ShownLine::Look;
    constexpr auto mostCharacters = ShownLine::mostCharacters;
    const bool isSaid = line.kind == KeptLine::Kind::said;
    // What somebody does is as much for all to read as what he says.
    const bool isBright =
        line.kind == KeptLine::Kind::done ||
        (conversation.kind() == Conversation::Kind::person && !line.isProgramsWord());
    return {.look = isSaid     ? Look::said
                    : isBright ? Look::passed
                               : Look::told,
            .speaker = isSaid ? shortened(line.speaker, mostCharacters) : "",
            .text = shortened(isSaid ? line.text : wordsOf(line), mostCharacters),
            .stamp = stampOf(line),
            .callsOwner = conversation.calls(line),
            .nameColor = isSaid && colorsNames_ && !line.isOwners
                             ? std::optional(nameColor(line.speaker))
                             : std::nullopt,
            .number = line.number};
}

ShownLine Reading::line(const PassedLine& line) const {
    return {.look = ShownLine::Look::passed,
            .text = shortened(line.words, ShownLine::mostCharacters),
            .stamp = stampOf({.at = line.at})};
}

std::string Reading::stampOf(const KeptLine& line) const {
    return stamps_ ? larkspin::stampOf(line, loop_) : "";
}

std::size_t indexOf(const Conversation& conversation, std::uint64_t number) {
    const auto& lines = conversation.lines();
    const auto found = std::ranges::find_if(
        lines, [number](const KeptLine& line) { return line.number >= number; });
    return static_cast<std::size_t>(found - lines.begin());
}

} // namespace larkspin
