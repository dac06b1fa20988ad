#include "library/unread_directories.h"

#include "shell/files.h"
#include "text/number.h"

namespace larkspin {

namespace {

std::string reasonOf(DirectoryRead::Outcome outcome) {
    switch (outcome) {
    case DirectoryRead::Outcome::missing:
        return "it isn't there";
    case DirectoryRead::Outcome::noDirectory:
        return "it is no directory";
    case DirectoryRead::Outcome::refused:
        return "permission denied";
    case DirectoryRead::Outcome::unanswered:
        return noAnswer;
    default:
        return "the disk can't be read";
    }
}

} // namespace

void UnreadDirectories::note(const std::string& directory, DirectoryRead::Outcome outcome) {
    if (++count_ > 1)
        return;
    first_ = directory;
    outcome_ = outcome;
}

std::string UnreadDirectories::told(const std::string& mark, const std::string& unmark) const {
    std::string text = "couldn't look into " + mark + first_ + unmark;
    if (count_ > 1)
        text += " and " + counted(count_ - 1, "more directory", "more directories", mark, unmark);
    return text + ":  " + reasonOf(outcome_);
}

} // namespace larkspin
