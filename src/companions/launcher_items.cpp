#include "companions/launcher_items.h"

#include "library/line_files.h"
#include "shell/app_state.h"
#include "shell/data_directory.h"

namespace larkspin {

namespace {

void fillUp(RowList& list, int count) {
    while (list.count() < count && list.add(""))
        continue;
}

} // namespace

// Of files that differ in length the shorter one is filled up with empty texts, and saved so: no
// line is lost, and what is added later still finds its other half. An item without a title can be
// started and deleted in the window; one without a path can only be deleted there, and it ends the
// walks of the commands, behind which there is none with a path any more.
void LauncherItems::load(LineFiles& files, const DataDirectory& directory) {
    files.loadTogether({directory.appPathsFile(), state_.appPaths},
                       {directory.appTitlesFile(), state_.appTitles});
    fillUp(state_.appPaths, state_.appTitles.count());
    fillUp(state_.appTitles, state_.appPaths.count());
    showCount();
}

void LauncherItems::save(LineFiles& files, const DataDirectory& directory) const {
    files.savelines(directory.appPathsFile(), state_.appPaths);
    files.savelines(directory.appTitlesFile(), state_.appTitles);
}

int LauncherItems::count() const {
    return state_.appTitles.count();
}

std::string LauncherItems::title(int index) const {
    return std::string(state_.appTitles.row(index));
}

std::string LauncherItems::path(int index) const {
    return std::string(state_.appPaths.row(index));
}

bool LauncherItems::titleHolds(int index, std::string_view folded) const {
    return state_.appTitles.folded(index).find(folded) != std::string_view::npos;
}

bool LauncherItems::add(const std::string& path, const std::string& title) {
    if (state_.appTitles.full())
        return false;
    state_.appPaths.add(asOneLine(path));
    state_.appTitles.add(asOneLine(title));
    showCount();
    return true;
}

void LauncherItems::removeAt(int index) {
    if (index < 0 || index >= count())
        return;
    state_.appPaths.removeAt(index);
    state_.appTitles.removeAt(index);
    state_.appPathText.clear();
    showCount();
}

void LauncherItems::clear() {
    state_.appTitles.clear();
    state_.appPathText.clear();
    state_.appPaths.clear();
    showCount();
}

void LauncherItems::select(int index) {
    if (!state_.appTitles.choose(index))
        return;
    state_.appPaths.setCurrentIndex(index);
    state_.appPathText = state_.appPaths.row(index);
}

int LauncherItems::selected() const {
    return state_.appTitles.currentIndex();
}

Row LauncherItems::mark(int index) const {
    return state_.appTitles.share(index);
}

int LauncherItems::find(const Row& mark) const {
    return state_.appTitles.find(mark);
}

void LauncherItems::showCount() {
    state_.appsz = "view " + std::to_string(count()) + " app items";
}

} // namespace larkspin
