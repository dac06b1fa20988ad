// The command catalogue: the forms of the commands as they are shown to the owner, each with its
// help. It tells him how to type them; what counts is the command table.
#pragma once

namespace larkspin {

struct AppState;

// Fills the lists of names and help anew, as they read under the trigger of the moment.
void fillcatalogue(AppState& state);

} // namespace larkspin
