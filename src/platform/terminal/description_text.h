// Described windows and menus as lines of text, for a front end that can't draw them.
#pragma once

#include "shell/menu.h"
#include "shell/window.h"

#include <string>
#include <vector>

namespace larkspin {

// How many rows of a list make a page.
inline constexpr int rowsPerPage = 20;

// The window's name, then a line per control as "window.control: kind text", without those that are
// hidden or cut off by the window's edge. A list is followed by the rows of one page, counted from
// 1 like the pages: "12 row", with ">" in front for the current row and "*" for a selected one.
// Pages after the first hold the lists alone; past its last page a list shows no rows.
std::vector<std::string> windowLines(const Window& window, int page);

// The menu's name, then a line per entry as "name: caption", set in by its depth, with "(checked)"
// in place of a check mark.
std::vector<std::string> menuLines(const Menu& menu);

// The same for the entries below one.
std::vector<std::string> submenuLines(const MenuEntry& entry);

// The entry of that name without regard to case, at any depth; nothing when there is none.
const MenuEntry* findEntry(const std::vector<MenuEntry>& entries, std::string_view name);

} // namespace larkspin
