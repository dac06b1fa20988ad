#include "host/name_completion.h"

#include "host/shown_room.h"
#include "text/fold.h"
#include "text/row_list.h"
#include "text/visible.h"

#include <string>
#include <vector>

namespace larkspin {

Completion completionOfNames(const ShownRoom& room, std::string_view typed) {
    const std::string_view word = typed.substr(typed.rfind(' ') + 1);
    if (word.empty())
        return {};
    const std::string begun = foldCase(word);
    const RowList& people = room.people();
    std::vector<CompletedWord> names;
    for (int row = 0; row < people.count(); ++row) {
        const std::string_view name = people.row(row);
        // Left out are the owner's own name and names with characters that can't be shown as they
        // are.
        if (people.folded(row).starts_with(begun) && name != room.ownName() &&
            visibleName(name) == name)
            names.push_back({std::string(name)});
    }
    Completion found = completionAmong(names, word);
    // A line that begins with a name is for whoever has it.
    if (word.size() == typed.size()) {
        for (Completion::Choice& choice : found.choices)
            choice.text += ": ";
        if (found.choices.size() == 1)
            found.text = found.choices.front().text;
    }
    return found;
}

} // namespace larkspin
