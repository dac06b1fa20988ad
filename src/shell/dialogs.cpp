#include "shell/dialogs.h"

#include "text/stand_ins.h"

namespace larkspin {

std::optional<std::string> Dialogs::askText(const TextQuestion& question) {
    const auto line = askLine(question);
    return line ? std::optional(afterEditing(question.preset, *line)) : std::nullopt;
}

} // namespace larkspin
