#include "companions/launcher_items.h"

#include "shell/app_state.h"
#include "text/line_breaks.h"

#include <utility>

namespace larkspin {

// Files that differ in length leave items without a title or without a path. One without a title
// can be started and deleted in the window. One without a path can only be deleted there, and a
// command that walks through the items takes it for the end of the list.
void LauncherItems::load(LauncherFiles& files) {
    leftOut_.clear();
    for (LauncherItem& item : files.load()) {
        if (state_.appTitles.full()) {
            // It stays in the files: a save puts it back after the others.
            leftOut_.push_back(std::move(item));
            continue;
        }
        state_.appPaths.add(item.path);
        state_.appTitles.add(item.title);
    }
    showCount();
}

void LauncherItems::save(LauncherFiles& files) const {
    LauncherItemList items;
    for (int index = 0; index < count(); ++index)
        items.push_back({path(index), title(index)});
    items.insert(items.end(), leftOut_.begin(), leftOut_.end());
    files.save(std::move(items));
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
    state_.appPaths.add(breaksAsBlanks(path));
    state_.appTitles.add(breaksAsBlanks(title));
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
