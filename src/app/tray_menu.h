// The menu of the tray icon: the tree that reaches windows, modes and settings. Most entries only
// call what other units do.
#pragma once

#include "shell/desktop.h"

namespace larkspin {

class Program;

// The icon refers to the program.
TrayIcon trayIcon(Program& program);

} // namespace larkspin
