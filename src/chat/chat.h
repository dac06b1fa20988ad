// The chat engine put together: the door through which lines come in, the road by which answers
// go out, and the commands on the engine itself.
#pragma once

#include "chat/chat_lines.h"
#include "chat/commands_window.h"
#include "chat/core.h"
#include "chat/dispatch.h"
#include "chat/recitals.h"
#include "chat/reply.h"
#include "chat/scanner.h"
#include "chat/silent_mode.h"
#include "chat/trigger_commands.h"
#include "shell/settings.h"

namespace larkspin {

struct Shell;
class Trace;

struct Chat {
    Chat(Shell& shell, EventLoop& loop, Dialogs& dialogs, Room& room, ChatLines& lines,
         Trace& trace);

    Reply reply;
    Recitals recitals;
    Core core;
    Dispatch dispatch;
    Scanner NiteScan1, NiteScan2, NiteScan3;
    TriggerCommands triggerCommands{core};
    SilentMode silentMode{core};
    CommandsWindow commandsWindow{core};

    // Every line of the owner's goes to each scanner that runs.
    void hear(const ChatLine& line);

    void loadSilence(const StoredSettings& stored); // after the greeting, which is always said
    void save(SettingsChanges& changes) const;
    void stopScanners();
};

} // namespace larkspin
