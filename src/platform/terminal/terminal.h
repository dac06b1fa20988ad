// The front end that has one line below the other, put together: styled on a terminal, a protocol
// for scripts where the output isn't one; dialogs, the tray and windows on it; and the rooms. Lines
// to be typed are left to the terminal, which edits them itself.
#pragma once

#include "chat/recitals.h"
#include "host/new_lines.h"
#include "irc/client/all_rooms.h"
#include "platform/terminal/line_reader.h"
#include "platform/terminal/queued_output.h"
#include "platform/terminal/terminal_commands.h"
#include "platform/terminal/terminal_desktop.h"
#include "platform/terminal/terminal_dialogs.h"
#include "platform/terminal/terminal_input.h"
#include "platform/terminal/terminal_password.h"
#include "platform/terminal/terminal_screen.h"

#include <string>
#include <utility>
#include <vector>

namespace larkspin {

class Terminal {
public:
    // Lines said in the rooms come in through `lines`. Networks are reached by such connections.
    Terminal(PollLoop& loop, ChatLines& lines, IrcNetworks::MakeConnection connections,
             KeptFiles& files, const DataDirectory& directory, const std::string& screenName,
             TerminalDialogs::ReadPath readPath);

    // Words with a slash, beside those of its own and about rooms.
    void add(std::vector<SlashWord> words) { commands_.add(std::move(words)); }

    void triggerBy(std::function<std::string()> trigger) {
        commands_.triggerBy(std::move(trigger));
    }
    void tellHelp(const std::string& about) { commands_.run("/help " + about); }

    // Whether somebody types here and reads what is shown, rather than a script.
    bool isForPerson() const { return isForPerson_; }

    // From now on lines are taken: said in the room, or done by the terminal itself, which works
    // these windows. Those on a pipe wait for what is recited, as long as somebody reads it.
    // `/quit` and the end of the input call `quit`. A network that the last run was on is connected
    // to.
    void open(std::vector<Window*> windows, Recitals& recitals, Task quit);

    // Leaves the room and gives the terminal back, before the process ends.
    void close();

private:
    QueuedOutput output_, errors_;
    TerminalInput input_;
    TerminalPassword password_;

public:
    TerminalScreen screen;
    TerminalDialogs dialogs;
    TerminalDesktop desktop;
    AllRooms rooms;

private:
    ShowUnder shows();
    void take(const std::string& line);
    void showNew();
    void showLine(const KeptLine& line);

    EventLoop& loop_;
    NewLines newLines_{rooms.conversations};
    TerminalCommands commands_;
    bool isForPerson_;
    LineReader reader_;
};

} // namespace larkspin
