#include "companions/companions.h"

#include "library/line_files.h"
#include "shell/app_state.h"
#include "shell/data_directory.h"

namespace larkspin {

void Companions::load() {
    AppState& state = core_.state;
    needs_.lineFiles.loadlines(needs_.directory.notesFile(), state.notes);
    notes.showCount();
    launcherItems.load(needs_.lineFiles, needs_.directory);
}

void Companions::save() {
    const AppState& state = core_.state;
    needs_.lineFiles.savelines(needs_.directory.notesFile(), state.notes);
    launcherItems.save(needs_.lineFiles, needs_.directory);
}

void Companions::unload() {
    notesWindow.reset();
    launcherWindow.reset();
    colorsWindow.reset();
}

} // namespace larkspin
