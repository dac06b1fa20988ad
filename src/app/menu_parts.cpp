#include "app/menu_parts.h"

#include "app/program.h"

#include <utility>

namespace larkspin {

MenuEntry submenu(std::string name, std::string caption, std::vector<MenuEntry> children) {
    return {.name = std::move(name),
            .caption = std::move(caption),
            .children = std::move(children),
            .isSubmenu = true};
}

MenuEntry entry(std::string name, std::string caption, Task action) {
    return {.name = std::move(name), .caption = std::move(caption), .action = std::move(action)};
}

MenuEntry label(std::string name, std::string caption) {
    return {.name = std::move(name), .caption = std::move(caption)};
}

// They are named p1, p2 and so on; p0 is the separator, since no two entries may have the same
// name.
std::vector<MenuEntry> playlistEntries(Program& p) {
    const AppState& state = p.shell.state;
    std::vector<MenuEntry> entries{label("numl", state.numl), separator("p0")};
    for (const std::string& name : state.p)
        entries.push_back(entry("p" + std::to_string(entries.size() - 1), name,
                                [&p, name] { p.library.playlistCommands.loadSilently(name); }));
    return entries;
}

} // namespace larkspin
