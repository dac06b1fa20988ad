// The menus' boxes with fixed texts: thanks, what is new, what is known not to work, and which
// program this is.
#pragma once

namespace larkspin {

class Dialogs;

void boxGreets(Dialogs& dialogs);
void boxWhatsNew(Dialogs& dialogs);
void boxKnownIssues(Dialogs& dialogs);
void boxAbout(Dialogs& dialogs);

} // namespace larkspin
