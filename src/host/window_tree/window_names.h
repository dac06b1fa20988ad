// How the chat client's windows are called, and the messages that work them. Nothing outside the
// window tree knows any of it.
#pragma once

#include <cstdint>

namespace larkspin::window {

// Classes. The top-level ones.
inline constexpr char frame[] = "AOL Frame25";
inline constexpr char modal[] = "_AOL_Modal";
inline constexpr char messageBox[] = "#32770";
// Classes of the controls and windows inside those.
inline constexpr char toolbar[] = "AOL Toolbar";
inline constexpr char toolbarStrip[] = "_AOL_Toolbar";
inline constexpr char childArea[] = "MDIClient";
inline constexpr char child[] = "AOL Child";
inline constexpr char combobox[] = "_AOL_Combobox";
inline constexpr char listbox[] = "_AOL_Listbox";
inline constexpr char icon[] = "_AOL_Icon";
inline constexpr char label[] = "_AOL_Static";
inline constexpr char gauge[] = "_AOL_Gauge";
inline constexpr char checkbox[] = "_AOL_Checkbox";
inline constexpr char aolButton[] = "_AOL_Button";
inline constexpr char shownText[] = "RICHCNTLREADONLY";
inline constexpr char input[] = "RICHCNTL";
inline constexpr char edit[] = "Edit";
inline constexpr char button[] = "Button";

// Captions. The client's message boxes and its clock's notice bear its own name.
inline constexpr char clientCaption[] = "America Online";
inline constexpr char instantMessageCaption[] = "Send Instant Message";
inline constexpr char welcome[] = "Welcome, ";

// The address that opens a message window, before the addressee. A message to one of the two
// addressees switches private messages, whatever it says.
inline constexpr char instantMessageAddress[] = "aol://9293:";
inline constexpr char messagesOn[] = "$IM_ON";
inline constexpr char messagesOff[] = "$IM_OFF";
inline constexpr char switchBody[] = "lks";

// The keyword that brings the clock's notice.
inline constexpr char onlineClock[] = "online clock";

// Keys; "^" holds Ctrl and "%" holds Alt for the next one.
inline constexpr char unreadMailKeys[] = "^r";
inline constexpr char oldMailKeys[] = "%MRO";
inline constexpr char sentMailKeys[] = "%MRS";
inline constexpr char signOffKeys[] = "%OO";

// The room's buttons: `*` stands for any run of characters, case counts.
inline constexpr char ignoreButton[] = "Ignor*"; // a toggle: it also takes the ignoring back
inline constexpr char ejectButton[] = "Eject M*";
inline constexpr char allowButton[] = "Allo*";
inline constexpr char ejectedButton[] = "Ejecte*"; // shows the list; only the room's owner sees it
inline constexpr char peopleButton[] = "Peopl*";   // shows the other list again

inline constexpr char messengerKey[] =
    "Software\\America Online\\AOL Instant Messenger (TM)\\CurrentVersion\\Login";
inline constexpr char messengerValue[] = "Screen Name";
inline constexpr unsigned binaryValue = 3; // the type of a number; all others are texts

// Messages.
inline constexpr unsigned setText = 0x0C;
inline constexpr unsigned close = 0x10;
inline constexpr unsigned setSelection = 0xB1; // of an input line: from and to
inline constexpr unsigned keyDown = 0x100;
inline constexpr unsigned keyUp = 0x101;
inline constexpr unsigned character = 0x102;
inline constexpr unsigned setCurrentRow = 0x186;
inline constexpr unsigned leftButtonDown = 0x201;

inline constexpr std::uint64_t returnKey = 0x0D;
inline constexpr std::uint64_t spaceKey = 0x20;

} // namespace larkspin::window
