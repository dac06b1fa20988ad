#include "companions/companions.h"

#include "library/line_files.h"
#include "shell/app_state.h"

#include <string>

namespace larkspin {

void Companions::load() {
    loadlines(files_, directory_.notesFile(), state_.notes);
    loadlines(files_, directory_.appPathsFile(), state_.appPaths);
    loadlines(files_, directory_.appTitlesFile(), state_.appTitles);
    state_.noted = "view " + std::to_string(state_.notes.count()) + " notes";
    state_.appsz = "view " + std::to_string(state_.appTitles.count()) + " app items";
}

void Companions::save() {
    savelines(files_, directory_.notesFile(), state_.notes);
    savelines(files_, directory_.appPathsFile(), state_.appPaths);
    savelines(files_, directory_.appTitlesFile(), state_.appTitles);
}

} // namespace larkspin
