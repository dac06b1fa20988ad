#include "chat/chat.h"

#include "shell/shell.h"

namespace larkspin {

Chat::Chat(Shell& shell, EventLoop& loop, Dialogs& dialogs, Room& room, ChatLines& lines,
           Trace& trace)
    : reply(shell.state, shell.settings, room, dialogs),
      recitals(shell.state, loop, lines, reply), core{shell.state, shell.settings, loop,
                                                      dialogs,     reply,          recitals},
      dispatch(shell.state, room, trace) {}

void Chat::hear(const ChatLine& line) {
    if (!dispatch.notes(line))
        return;
    // In the order in which the scanners are started: the second one runs only while a choice is
    // open.
    NiteScan1.hear(line);
    NiteScan3.hear(line);
    NiteScan2.hear(line);
}

void Chat::loadSilence(const StoredSettings& stored) {
    loadFlag(core.state.silnt, stored.get("silent"));
}

void Chat::save(SettingsChanges& changes) const {
    changes.emplace_back("silent", yesNo(core.state.silnt));
    changes.emplace_back("trigger", core.state.trigger);
}

void Chat::stopScanners() {
    NiteScan1.stopscan();
    NiteScan2.stopscan();
    NiteScan3.stopscan();
}

} // namespace larkspin
