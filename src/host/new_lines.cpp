#include "host/new_lines.h"

#include "chat/markup.h"
#include "host/conversations.h"
#include "shell/event_loop.h"
#include "text/visible.h"

#include <algorithm>

namespace larkspin {

namespace {} // namespace

NewLines::NewLines(const Conversations& conversations)
    : conversations_(conversations), front_(conversations.front().place()) {}

// The lines after that number. New ones are few, so they are looked for from the end.
void NewLines::addNew(const Conversation& conversation, std::uint64_t after,
                      std::vector<New>& all) const {
    const auto& lines = conversation.lines();
    auto line = lines.end();
    while (line != lines.begin() && std::prev(line)->number > after)
        --line;
    const bool isInFront = conversation.place() == front_;
    for (; line != lines.end(); ++line)
        if (isInFront || line->isForOwner)
            all.push_back({&conversation, &*line});
}

void NewLines::take(const Show& show) {
    if (revision_ == conversations_.revision())
        return;
    revision_ = conversations_.revision();
    const Conversation& front = conversations_.front();
    const bool isOther = front_ != front.place();
    front_ = front.place();
    std::vector<New> all;
    for (const auto& conversation : conversations_.all())
        addNew(*conversation, isOther && conversation.get() == &front ? front.readBefore() : shown_,
               all);
    std::ranges::sort(all, {}, [](const New& each) { return each.line->number; });
    if (isOther)
        show.entered(front);
    if (const int count = static_cast<int>(all.size()); isOther && count > mostUnread) {
        show.leftOut(count - mostUnread);
        all.erase(all.begin(), all.end() - mostUnread);
    }
    shown_ = conversations_.lastNumber();
    for (const auto& [conversation, line] : all)
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
    const bool isSaid = line.kind == KeptLine::Kind::said;
    if (line.isOwners && isSaid)
        return "to " + name + ": " + wordsOf(line);
    if (conversation.kind() != Conversation::Kind::person)
        return name + ": " + (isSaid ? line.speaker + ": " : "") + wordsOf(line);
    return isSaid ? line.speaker + " whispers: " + wordsOf(line) : wordsOf(line);
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
