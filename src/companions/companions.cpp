#include "companions/companions.h"

#include "library/line_files.h"
#include "shell/app_state.h"
#include "shell/data_directory.h"
#include "shell/kept_files.h"

namespace larkspin {

void Companions::load() {
    AppState& state = core_.state;
    const Loaded loaded = needs_.lineFiles.loadlines(needs_.directory.notesFile(), state.notes);
    // Notes that don't fit into the list stay in their file.
    if (loaded.leftOut > 0)
        needs_.files.tell("<b>" + std::to_string(loaded.leftOut) +
                          "</b> notes don't fit into the list");
    notes.showCount();
    launcherItems.load(launcherFiles_);
}

void Companions::save() {
    const AppState& state = core_.state;
    needs_.lineFiles.savelines(needs_.directory.notesFile(), state.notes);
    launcherItems.save(launcherFiles_);
}

void Companions::unload() {
    notesWindow.reset();
    launcherWindow.reset();
    colorsWindow.reset();
}

} // namespace larkspin
