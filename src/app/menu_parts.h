// What the menus of the tray and of the room's window are made of.
#pragma once

#include "shell/menu.h"

#include <string>
#include <vector>

namespace larkspin {

class Program;

MenuEntry submenu(std::string name, std::string caption, std::vector<MenuEntry> children);
MenuEntry entry(std::string name, std::string caption, Task action);

// An entry that only shows something. Choosing it closes the menu.
MenuEntry label(std::string name, std::string caption);

// The named playlists. Choosing one loads it without a word.
std::vector<MenuEntry> playlistEntries(Program& program);

} // namespace larkspin
