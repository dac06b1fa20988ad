#include "companions/companions.h"

#include "library/line_files.h"
#include "shell/app_state.h"
#include "shell/data_directory.h"

#include <string>

namespace larkspin {

void Companions::load() {
    AppState& state = core_.state;
    needs_.lineFiles.loadlines(needs_.directory.notesFile(), state.notes);
    needs_.lineFiles.loadlines(needs_.directory.appPathsFile(), state.appPaths);
    needs_.lineFiles.loadlines(needs_.directory.appTitlesFile(), state.appTitles);
    notes.showCount();
    state.appsz = "view " + std::to_string(state.appTitles.count()) + " app items";
}

void Companions::save() {
    const AppState& state = core_.state;
    needs_.lineFiles.savelines(needs_.directory.notesFile(), state.notes);
    needs_.lineFiles.savelines(needs_.directory.appPathsFile(), state.appPaths);
    needs_.lineFiles.savelines(needs_.directory.appTitlesFile(), state.appTitles);
}

void Companions::unload() {
    notesWindow.notez.visible = false;
}

} // namespace larkspin
