#include "playback/file_menu.h"

#include "library/adding.h"
#include "playback/behind_splash.h"
#include "shell/desktop.h"
#include "shell/dialogs.h"

namespace larkspin {

void FileMenu::popUp() {
    desktop_.popUp({.name = "filez2", .entries = [this] { return entries(); }});
}

std::vector<MenuEntry> FileMenu::entries() {
    return {{.name = "adfil", .caption = "add file(s)", .action = [this] { adding_.addFiles(); }},
            {.name = "adir", .caption = "add directory", .action = [this] { addDirectory(); }},
            separator("f"),
            {.name = "adstr", .caption = "add string", .action = [this] { addString(); }}};
}

void FileMenu::addDirectory() {
    if (const auto chosen = adding_.askForDirectory())
        behindSplash_.run([&] { adding_.addDirectory(*chosen); });
}

void FileMenu::addString() {
    const auto text = dialogs_.askText(
        {.title = "string adder", .prompt = "what string would you like to add to the playlist?"});
    if (text)
        behindSplash_.run([&] { adding_.addString(*text); });
}

} // namespace larkspin
