#include "chat/dispatch.h"

#include "chat/reply.h"
#include "chat/room.h"
#include "shell/app_state.h"
#include "shell/trace.h"
#include "text/fold.h"
#include "text/utf8.h"
#include "text/wildcard.h"

namespace larkspin {

// Names are compared to the letter: one that differs in case alone is somebody else's.
bool Dispatch::isOwners(const ChatLine& line) const {
    const std::string owner = room_.currentScreenName();
    return !owner.empty() && line.speaker == owner;
}

bool Dispatch::notes(const ChatLine& line) const {
    if (!isOwners(line)) {
        trace_.count("line of others");
        return false;
    }
    if (isReply(line.text))
        return false;
    trace_.note("heard", line.text);
    return true;
}

// Under the triggers that the owner can choose no reply is a command anyway. But he may have
// written a wildcard into the settings by hand. Then all replies would be commands, and answer each
// other without end.
void Dispatch::handle(const ChatLine& line, std::span<const CommandRow> rows) const {
    if (!isOwners(line) || isReply(line.text))
        return;
    const std::string lowered = foldCase(line.text);
    for (const CommandRow& row : rows) {
        if (!matches(row, lowered))
            continue;
        trace_.note("row", row.pattern);
        row.run(row.run.takesArgument() ? argument(row, line.text) : std::string());
        return; // no line fits two rows
    }
}

// The trigger becomes part of the pattern as it is. None of those that the owner can choose holds a
// wildcard.
bool Dispatch::matches(const CommandRow& row, std::string_view lowered) const {
    if (!row.afterTrigger)
        return lowered == row.pattern;
    const std::string& trigger = state_.trigger;
    if (row.run.takesArgument())
        return fits(lowered, trigger + std::string(row.pattern));
    return lowered.size() == trigger.size() + row.pattern.size() && lowered.starts_with(trigger) &&
           lowered.ends_with(row.pattern);
}

// The argument is cut from the line as it was typed. The cut is counted in characters, because
// folding keeps their number but not always their length.
std::string Dispatch::argument(const CommandRow& row, std::string_view line) const {
    const std::size_t skipped = characterCount(state_.trigger) + row.pattern.find(' ') + 1;
    return std::string(line.substr(prefixLength(line, skipped)));
}

} // namespace larkspin
