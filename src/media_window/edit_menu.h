// The media window's edit menu: rows out of the playlist. Their files stay.
#pragma once

#include "chat/core.h"
#include "shell/menu.h"

#include <vector>

namespace larkspin {

class BehindSplash;
class Desktop;
class Removing;

class EditMenu {
public:
    EditMenu(const Core& core, Desktop& desktop, BehindSplash& behindSplash, Removing& removing)
        : dialogs_(core.dialogs), desktop_(desktop), behindSplash_(behindSplash),
          removing_(removing) {}

    void popUp();

private:
    std::vector<MenuEntry> entries();
    void removeString();

    Dialogs& dialogs_;
    Desktop& desktop_;
    BehindSplash& behindSplash_;
    Removing& removing_;
};

} // namespace larkspin
