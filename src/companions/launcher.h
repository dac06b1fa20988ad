// The launcher: the commands that keep the owner's programs, pictures and sounds and start them,
// and the one way in which anything is started. Silent mode refuses the commands but `clra` and
// `ap?`.
#pragma once

#include "chat/core.h"

#include <string>

namespace larkspin {

class Directories;
class LauncherItems;
class Launching;

class Launcher {
public:
    Launcher(const Core& core, LauncherItems& items, Directories& directories, Launching& launching)
        : state_(core.state), loop_(core.loop), reply_(core.reply), recitals_(core.recitals),
          items_(items), directories_(directories), launching_(launching) {}

    // The commands, but for the one that shows the window. `load` and `rmva` take every item with
    // the text in its title, without regard to case.
    void load(const std::string& text);
    void rmva(const std::string& text);
    void clra();
    void tellCount();
    void ap(const std::string& pathAndTitle);
    void scra();

    // Starts the selected item, if it has a path.
    void launchSelected();

    // A path that ends in ".exe" is run as a program, anything else is opened: a drive path or an
    // address. What can't be started is told.
    void launchItem(const std::string& path);
    void launchFile(const std::string& path);

private:
    void announceAndLaunch(int index);
    void tellNotFound(const std::string& text);
    void tellUnable(const std::string& path);

    AppState& state_;
    EventLoop& loop_;
    Reply& reply_;
    Recitals& recitals_;
    LauncherItems& items_;
    Directories& directories_;
    Launching& launching_;
};

} // namespace larkspin
