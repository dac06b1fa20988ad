#include "companions/companions.h"

#include "library/line_files.h"
#include "shell/app_state.h"

#include <string>

namespace larkspin {

void Companions::load() {
    lineFiles_.loadlines(directory_.notesFile(), state_.notes);
    lineFiles_.loadlines(directory_.appPathsFile(), state_.appPaths);
    lineFiles_.loadlines(directory_.appTitlesFile(), state_.appTitles);
    state_.noted = "view " + std::to_string(state_.notes.count()) + " notes";
    state_.appsz = "view " + std::to_string(state_.appTitles.count()) + " app items";
}

void Companions::save() {
    lineFiles_.savelines(directory_.notesFile(), state_.notes);
    lineFiles_.savelines(directory_.appPathsFile(), state_.appPaths);
    lineFiles_.savelines(directory_.appTitlesFile(), state_.appTitles);
}

} // namespace larkspin
