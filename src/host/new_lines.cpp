#include "host/new_lines.h"

#include "chat/markup.h"
#include "host/conversations.h"
#include "shell/event_loop.h"
#include "text/visible.h"

#include <algorithm>

namespace larkspin {

NewLines::NewLines(const Conversations& conversations)
    : conversations_(conversations), front_(conversations.front().place()) {}

// The lines after that number. New ones are few, so they are looked for from the end. If none was
// put in among older ones, the first line that isn't new ends that.
void NewLines::addNew(const Conversation& conversation, std::uint64_t after,
                      std::vector<New>& all) const {
    const auto& lines = conversation.lines();
    const bool isInFront = conversation.place() == front_;
    const auto first = static_cast<std::ptrdiff_t>(all.size());
    std::uint64_t place = conversations_.lastNumber();
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        place = std::min(place, line->number);
        if (line->number > after && (isInFront || line->isForOwner))
            all.push_back({&conversation, &*line, place});
        else if (line->number <= after && conversation.lastPutIn() <= after)
            break;
    }
    std::reverse(all.begin() + first, all.end());
}

void NewLines::take(const Show& show) {
    if (revision_ == conversations_.revision())
        return;
    revision_ = conversations_.revision();
    const Conversation& front = conversations_.front();
    const bool isAgain = again_ != conversations_.again().number;
    again_ = conversations_.again().number;
    const bool isOther = isAgain || front_ != front.place();
    const int most = isAgain ? conversations_.again().lines : mostUnread;
    front_ = front.place();
    std::vector<New> all;
    for (const auto& conversation : conversations_.all())
        addNew(*conversation,
               conversation.get() != &front || !isOther ? shown_
               : isAgain                                ? 0
                                                        : front.readBefore(),
               all);
    std::ranges::stable_sort(all, {}, &New::place);
    if (isOther)
        show.entered(front, isAgain);
    if (const int count = static_cast<int>(all.size()); isOther && count > most) {
        show.leftOut(count - most);
        all.erase(all.begin(), all.end() - most);
    }
    shown_ = conversations_.lastNumber();
    for (const auto& [conversation, line, place] : all)
        if (conversation == &front)
            show.line(*line);
        else
            show.elsewhere(*conversation, *line);
}

std::string wordsOf(const KeptLine& line) {
    switch (line.kind) {
    case KeptLine::Kind::done:
        return "* " + line.speaker + ' ' + plainMarkup(line.text);
    case KeptLine::Kind::noted:
        return line.speaker + " notes: " + plainMarkup(line.text);
    case KeptLine::Kind::said:
        return plainMarkup(line.text);
    case KeptLine::Kind::news:
    case KeptLine::Kind::answer:
        break;
    }
    return line.text;
}

std::string wordsFromElsewhere(const Conversations& all, const Conversation& conversation,
                               const KeptLine& line) {
    const std::string name = all.fullName(conversation);
    const bool isSaid = line.kind == KeptLine::Kind::said,
               isPrivate = conversation.kind() == Conversation::Kind::person;
    if (line.isOwners && isSaid)
        return "to " + name + ": " + wordsOf(line);
    if (!isPrivate)
        return name + ": " + (isSaid ? line.speaker + ": " : "") + wordsOf(line);
    // What is done in private must not look as if it were done here.
    if (isSaid || line.kind == KeptLine::Kind::done)
        return (line.isOwners ? "to " + name : name + " whispers") + ": " + wordsOf(line);
    const bool isNoted = line.kind == KeptLine::Kind::noted && !line.isOwners;
    return isNoted ? name + " notes: " + plainMarkup(line.text) : wordsOf(line);
}

std::string stampOf(const KeptLine& line, const EventLoop& loop) {
    const std::tm date = loop.dateOf(line.at), today = loop.localTime();
    const bool isToday = date.tm_yday == today.tm_yday && date.tm_year == today.tm_year;
    char text[32] = "";
    std::strftime(text, sizeof text, isToday ? "%H:%M" : "%Y-%m-%d %H:%M", &date);
    return text;
}

std::string wordsOfEntering(const Conversations& all, const Conversation& conversation) {
    if (conversation.kind() == Conversation::Kind::home)
        return "you are at home";
    const bool isPerson = conversation.kind() == Conversation::Kind::person;
    return (isPerson ? "you talk to " : "you are in ") + all.fullName(conversation);
}

} // namespace larkspin
