// Menus as data: a tree of entries, made from the state anew whenever it is looked at, so that
// captions and check marks are those of the moment.
#pragma once

#include "shell/event_loop.h"

#include <functional>
#include <string>
#include <vector>

namespace larkspin {

struct MenuEntry {
    std::string name; // by which tests and terminals choose it; no two in a menu bear the same
    std::string caption;
    Task action = {};                     // empty: choosing it only closes the menu
    bool checked = false;                 // has a check mark
    std::vector<MenuEntry> children = {}; // of a submenu, which has no action
    bool isSubmenu = false;               // also with no children

    bool isSeparator() const { return caption == "-"; }
};

struct Menu {
    std::string name;
    std::function<std::vector<MenuEntry>()> entries;
};

// A line across the menu.
inline MenuEntry separator(std::string name) {
    return {.name = std::move(name), .caption = "-"};
}

} // namespace larkspin
