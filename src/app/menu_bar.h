// The menus of the room's window as data: everything that can be done there, by name. An entry does
// what a word or a button does, and types nothing for the owner where others would read it.
#pragma once

#include "shell/menu.h"

#include <functional>
#include <string>
#include <vector>

namespace larkspin {

class AllRooms;
class FirstSteps;
class Program;

struct MenuBarNeeds {
    Program& program; // these must live on
    AllRooms& rooms;
    FirstSteps& firstSteps;

    // Does what a line with a slash says.
    std::function<void(const std::string& line)> run;

    // Show the dialogs of the front end. Where it has none for preferences, they are a menu; it has
    // no entry to connect then.
    Task connect = {}, preferences = {};

    std::string manual = {}; // its path; empty where it isn't installed
};

// In their order.
std::vector<Menu> menuBar(const MenuBarNeeds& needs);

} // namespace larkspin
