#include "playback/random_pick.h"

#include "library/playlist_row.h"
#include "playback/choices.h"
#include "shell/app_state.h"
#include "text/number.h"

#include <string>
#include <string_view>

namespace larkspin {

bool RandomPick::randompick(const StillWanted& stillWanted, const Task& atEachTry) {
    bool taken = false;
    for (int tried = 0; tried < tries && !taken; ++tried) {
        loop_.serveTurn();
        if (!stillWanted() || state_.masterList.empty())
            return false;
        taken = offerRow(chance_.below(state_.masterList.count()), atEachTry);
    }
    if (!taken)
        offerRow(anyOf(rowsLeft(), state_.masterList.count()), atEachTry);
    // Every song has had its turn.
    if (state_.playedMemory.count() == state_.masterList.count())
        state_.playedMemory.clear();
    return true;
}

bool RandomPick::offerRow(int index, const Task& atEachTry) {
    state_.setMasterIndex(index);
    if (atEachTry)
        atEachTry();
    const std::string title = songOfRow(state_.masterList.currentRow()).title();
    choices_.take(title);
    if (state_.playedMemory.contains(title))
        return false;
    state_.playedMemory.add(title);
    return true;
}

// The rows whose titles aren't remembered. All titles are made before the first one is looked up:
// the two kinds of work in turns push each other out of the processor's cache and take twice as
// long.
std::vector<int> RandomPick::rowsLeft() const {
    std::string titles;
    std::vector<std::size_t> ends;
    for (int index = 0; index < state_.masterList.count(); ++index) {
        const std::string_view row = state_.masterList.folded(index);
        titles.append(rowname(row)).append(rowext(row));
        ends.push_back(titles.size());
    }
    std::vector<std::string_view> folded;
    folded.reserve(ends.size());
    for (std::size_t start = 0; const std::size_t end : ends) {
        folded.emplace_back(titles.data() + start, end - start);
        start = end;
    }
    const std::vector<bool> isRemembered = state_.playedMemory.containsEachFolded(folded);
    std::vector<int> left;
    for (std::size_t row = 0; row < folded.size(); ++row)
        if (!isRemembered[row])
            left.push_back(static_cast<int>(row));
    return left;
}

bool RandomPick::pickFromChoices(const StillWanted& stillWanted) {
    bool taken = false;
    for (int tried = 0; tried < tries && !taken; ++tried) {
        loop_.serveTurn();
        if (!stillWanted() || state_.choiceList.empty())
            return false;
        taken = offerChoice(chance_.below(state_.choiceList.count()));
    }
    // Chance may go on hitting songs that have been played. After so many tries only the others are
    // picked from.
    if (!taken)
        offerChoice(anyOf(choicesLeft(), state_.choiceList.count()));
    return true;
}

std::vector<int> RandomPick::choicesLeft() const {
    std::vector<int> left;
    for (int index = 0; index < state_.choiceList.count(); ++index)
        if (!state_.playedMemory.containsFolded(state_.choiceList.folded(index)))
            left.push_back(index);
    return left;
}

bool RandomPick::offerChoice(int index) {
    state_.choiceList.setCurrentIndex(index);
    if (meetsMemory(index))
        return false;
    state_.playedMemory.add(state_.choiceList.share(index));
    return true;
}

// Whether the memory holds the choice. Each remembered row that is looked at counts how many of
// them contain the choice; once the count has reached the number of choices all of them have had
// their turn, and the memory is emptied.
bool RandomPick::meetsMemory(int index) {
    const std::string_view wanted = state_.choiceList.folded(index);
    RowList& memory = state_.playedMemory;
    int containing = 0;
    for (int entry = 0; entry < memory.count(); ++entry)
        containing += memory.folded(entry).find(wanted) != std::string_view::npos;

    bool met = false;
    double hits = numberOrZero(state_.pickHits);
    for (int entry = 0; entry < memory.count(); ++entry) {
        met = met || memory.folded(entry) == wanted;
        hits += containing;
        if (hits == state_.choiceList.count()) {
            memory.clear();
            hits = 0;
        }
    }
    state_.pickHits = numberText(hits);
    return met;
}

// One of the indexes that are left, each as likely as the other. With none left the memory
// is emptied, and all of them are.
int RandomPick::anyOf(const std::vector<int>& left, int count) {
    if (!left.empty())
        return left[static_cast<std::size_t>(chance_.below(static_cast<int>(left.size())))];
    state_.playedMemory.clear();
    state_.pickHits = "0";
    return chance_.below(count);
}

} // namespace larkspin
