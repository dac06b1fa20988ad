// What the owner can do about somebody in the room in front, as a menu: what the words with a slash
// do, as far as it is possible there. At home it is what `'x` and `'eject` do.
#pragma once

#include "shell/menu.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace larkspin {

class Conversations;
class IrcClient;
class IrcNetworks;
class OwnRoom;

class PeopleMenu {
public:
    // All must live on. A line with a slash is run by the task.
    using Run = std::function<void(const std::string& line)>;
    PeopleMenu(const Conversations& conversations, OwnRoom& own, IrcNetworks& networks, Run run)
        : conversations_(conversations), own_(own), networks_(networks), run_(std::move(run)) {}

    // Without entries where nothing can be done. What is chosen does nothing once the owner is
    // elsewhere, where the name is somebody else's.
    std::vector<MenuEntry> of(const std::string& name);

    // What a double click does.
    void talkTo(const std::string& name);

private:
    std::vector<MenuEntry> atHome(const std::string& name);
    std::vector<MenuEntry> onNetwork(const IrcClient& client, const std::string& name);
    MenuEntry entry(const std::string& word, std::string caption, const std::string& name);
    Task here(Task work) const;

    const Conversations& conversations_;
    OwnRoom& own_;
    IrcNetworks& networks_;
    Run run_;
};

} // namespace larkspin
