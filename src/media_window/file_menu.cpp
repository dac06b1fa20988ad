#include "media_window/file_menu.h"

#include "library/adding.h"
#include "media_window/behind_splash.h"
#include "shell/desktop.h"
#include "shell/dialogs.h"
#include "shell/this_run.h"

namespace larkspin {

void FileMenu::popUp() {
    desktop_.popUp({.name = "filez2", .entries = [this] { return entries(); }});
}

std::vector<MenuEntry> FileMenu::entries() {
    return {{.name = "adfil", .caption = "add file(s)", .action = [this] { adding_.addFiles(); }},
            {.name = "adir", .caption = "add directory", .action = [this] { askForDirectory(); }},
            separator("f"),
            {.name = "adstr", .caption = "add string", .action = [this] { addString(); }}};
}

void FileMenu::askForDirectory() {
    const ThisRun run(state_);
    const auto chosen = adding_.askForDirectory();
    if (chosen && run.lasts())
        behindSplash_.run([&] { adding_.addDirectory(*chosen); });
}

void FileMenu::addString() {
    const auto text = dialogs_.askText(
        {.title = "string adder", .prompt = "what string would you like to add to the playlist?"});
    if (text)
        behindSplash_.run([&] { adding_.addString(*text); });
}

} // namespace larkspin
