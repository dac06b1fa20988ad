#include "chat/dispatch.h"

#include "chat/reply.h"
#include "chat/room.h"
#include "shell/app_state.h"
#include "text/fold.h"
#include "text/utf8.h"
#include "text/wildcard.h"

namespace larkspin {

void Dispatch::handle(const ChatLine& line, std::span<const CommandRow> rows) const {
    const std::string owner = room_.currentScreenName();
    // Names are compared to the letter: one that differs in case alone is somebody else's.
    if (owner.empty() || line.speaker != owner)
        return;
    // Under the triggers that the owner can choose no reply is a command anyway. But he may have
    // written a wildcard into the settings by hand. Then all replies would be commands, and answer
    // each other without end.
    if (isReply(line.text))
        return;
    const std::string lowered = foldCase(line.text);
    for (const CommandRow& row : rows) {
        if (!matches(row, lowered))
            continue;
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
