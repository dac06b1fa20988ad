#include "library/list_questions.h"

#include "chat/recitals.h"
#include "chat/reply.h"
#include "library/playlist.h"
#include "shell/app_state.h"
#include "text/number.h"
#include "text/sought_text.h"
#include "text/utf8.h"

namespace larkspin {

namespace {

constexpr double betweenDirectories = 0.7; // of a recital, in seconds

std::string percent(double part, int whole) {
    return numberText(static_cast<double>(rounded(10000 * part / whole)) / 100);
}

} // namespace

void ListQuestions::media() {
    const std::string rows = std::to_string(state_.masterList.count());
    reply_.sayOrBox("media count:  <b>" + rows, "media count:  " + rows);
}

void ListQuestions::dir() {
    collectdirs(state_);
    reply_.saychat("total number of directories:  <b>" + std::to_string(state_.knownDirs.count()));
}

// Each directory is told as knownDirs holds it when its turn comes. There is a pause before each,
// and none after the last.
void ListQuestions::scrd() {
    collectdirs(state_);
    recitals_.begin([this, index = -1]() mutable {
        const RowList& directories = state_.knownDirs;
        const std::string number = std::to_string(index + 1);
        if (index < 0)
            reply_.saychat("scrolling <b>" + std::to_string(directories.count()) +
                           "</b> directories");
        else if (index < directories.count())
            reply_.saychat("<b>" + number + ".</b>  " + std::string(directories.row(index)));
        const bool isLast = ++index >= directories.count();
        return isLast ? std::nullopt : std::optional(betweenDirectories);
    });
}

void ListQuestions::count(const std::string& text) {
    countmatches(state_.masterList, text);
    if (state_.matchCount == "0") {
        reply_.sayOrBox("your gay song was not found");
        return;
    }
    const int rows = state_.masterList.count();
    const std::string found = state_.matchCount, all = std::to_string(rows),
                      share = percent(numberOrZero(found), rows);
    reply_.sayOrBox("<b>" + found + "</b> matches for <b>" + text + "</b>, <b>" + share +
                        "</b>% of <b>" + all,
                    found + " matches for " + text + ", " + share + "% of " + all);
}

void ListQuestions::countmatches(RowList& list, const std::string& text) {
    constexpr std::size_t uncounted = 4; // characters at the end of each row
    const SoughtText wanted(text);
    int matches = 0, last = list.currentIndex();
    for (int index = 0; index < list.count(); ++index) {
        const std::string_view row = list.folded(index);
        // The whole row is looked at first, since that rules most rows out without cutting them.
        if (!wanted.isIn(row) || !wanted.isIn(withoutLast(row, uncounted)))
            continue;
        ++matches;
        last = index;
    }
    list.setCurrentIndex(last);
    state_.matchCount = std::to_string(matches);
}

} // namespace larkspin
