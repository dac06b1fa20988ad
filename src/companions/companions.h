// What stands around the player, put together: the owner's notes and his launcher items, the
// colours of the windows and the style of what is said.
#pragma once

#include "chat/core.h"
#include "companions/colors_window.h"
#include "companions/launcher.h"
#include "companions/launcher_items.h"
#include "companions/launcher_window.h"
#include "companions/note_commands.h"
#include "companions/note_recital.h"
#include "companions/notes.h"
#include "companions/notes_window.h"
#include "companions/style_commands.h"
#include "companions/window_colors.h"

namespace larkspin {

class DataDirectory;
class Directories;
class KeptFiles;
class Launching;
class LineFiles;

// What the companions use of the floors below, beside the core.
struct CompanionsNeeds {
    KeptFiles& files;
    LineFiles& lineFiles;
    const DataDirectory& directory;
    Directories& directories;
    Launching& launching;
};

struct Companions {
    Companions(const Core& core, const CompanionsNeeds& needs) : core_(core), needs_(needs) {}

private: // what the units are made with
    Core core_;
    CompanionsNeeds needs_;
    LauncherFiles launcherFiles_{needs_.files, needs_.directory};

public:
    Notes notes{core_};
    NoteRecital noteRecital{core_, notes};
    NoteCommands noteCommands{core_, notes, noteRecital};
    NotesWindow notesWindow{core_, notes, noteRecital};
    LauncherItems launcherItems{core_.state};
    Launcher launcher{core_, launcherItems, needs_.directories, needs_.launching};
    LauncherWindow launcherWindow{core_, launcherItems, launcher};
    StyleCommands style{core_};
    WindowColors windowColors;
    ColorsWindow colorsWindow{core_, windowColors};

    void load();
    void save();
    void unload();
};

} // namespace larkspin
