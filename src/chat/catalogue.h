// The command catalogue: the forms of the commands as they are shown to the owner, each with its
// help. It tells him how to type them; what counts is the command table.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

struct AppState;

// Fills the lists of names and help anew, as they read under the trigger of the moment.
void fillcatalogue(AppState& state);

// The help for that form, as it stands after the trigger; empty when none is listed.
std::string helpOfForm(std::string_view form);

} // namespace larkspin
