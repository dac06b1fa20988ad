#include "media_window/edit_menu.h"

#include "library/removing.h"
#include "media_window/behind_splash.h"
#include "shell/desktop.h"
#include "shell/dialogs.h"

namespace larkspin {

void EditMenu::popUp() {
    desktop_.popUp({.name = "editz2", .entries = [this] { return entries(); }});
}

std::vector<MenuEntry> EditMenu::entries() {
    return {{.name = "remfil",
             .caption = "remove file(s)",
             .action = [this] { removing_.removeSelected(); }},
            {.name = "remal", .caption = "remove all", .action = [this] { removing_.removeAll(); }},
            separator("e"),
            {.name = "remstr", .caption = "remove string", .action = [this] { removeString(); }}};
}

void EditMenu::removeString() {
    const auto text =
        dialogs_.askText({.title = "string remover",
                          .prompt = "what string would you like to remove to the playlist?"});
    if (text)
        behindSplash_.run([&] { removing_.removeString(*text); });
}

} // namespace larkspin
