// What the launcher holds: row i of `appTitles` and row i of `appPaths` are one item. All that
// adds, takes out and selects items goes through here, so that the two lists stay parallel.
#pragma once

#include "companions/launcher_files.h"
#include "text/row.h"

#include <string>
#include <string_view>

namespace larkspin {

struct AppState;

class LauncherItems {
public:
    explicit LauncherItems(AppState& state) : state_(state) {}

    void load(LauncherFiles& files);
    void save(LauncherFiles& files) const;

    int count() const;
    // Indexes count from 0. Outside the list: an empty text, and no effect.
    std::string title(int index) const;
    std::string path(int index) const;
    bool titleHolds(int index, std::string_view folded) const;

    bool add(const std::string& path, const std::string& title); // false when the list is full
    void removeAt(int index);
    void clear();

    // Selects an item in both lists and shows its path.
    void select(int index);
    int selected() const; // -1 for none

    // What finds the item again, whatever happens to the list meanwhile.
    Row mark(int index) const;
    int find(const Row& mark) const; // -1 when it is gone

private:
    void showCount();

    AppState& state_;
    LauncherItemList leftOut_; // of the files: the list has no room for them
};

} // namespace larkspin
