// The tray's boxes with fixed texts: thanks, what is new, and what is known not to work.
#pragma once

namespace larkspin {

class Dialogs;

void boxGreets(Dialogs& dialogs);
void boxWhatsNew(Dialogs& dialogs);
void boxKnownIssues(Dialogs& dialogs);

} // namespace larkspin
