#include "app/about_boxes.h"

#include "shell/dialogs.h"
#include "shell/version.h"

namespace larkspin {

void boxGreets(Dialogs& dialogs) {
    dialogs.box("to everyone who kept a room alive all night, and everyone that's helped me beta "
                "this and gave me suggestions, and just people i know and think are cool will be "
                "here later.");
}

void boxWhatsNew(Dialogs& dialogs) {
    dialogs.titledBox("lks version " + versionText(),
                      "what's new? in this version, added a \"rec\" button to the media window "
                      "(see commands list to see what it does).  i'll make greets, and scanpc on "
                      "load work next version.");
}

void boxAbout(Dialogs& dialogs) {
    dialogs.titledBox(
        "about larkspin",
        "larkspin " + versionText() +
            "\n\na music player that sits in a chat room and does what you type there. "
            "it is free software.");
}

void boxKnownIssues(Dialogs& dialogs) {
    dialogs.box(
        "i know there are some issues and bugs people are having with this program, but i will fix "
        "them soon.\n"
        "\n"
        "bugs/issues:\n"
        "playlist doesn't save after delete, rename, or exit unless you do it manually\n"
        "scanpc on load is not functional yet\n"
        "using \"ref\" as a command or the button sometimes will double a directory\n"
        "refreshing a directory that has subdirectores in it will cause lks to refresh everything\n"
        "unejector doesn't work half of the time\n"
        "\n"
        "please report any bug to bugs@larkspin.invalid");
}

} // namespace larkspin
