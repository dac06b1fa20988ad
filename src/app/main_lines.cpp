#include "app/main_lines.h"

#include "app/first_steps.h"
#include "app/main_linux.h"
#include "host/trace_word.h"
#include "platform/posix/poll_loop.h"
#include "platform/posix/user_directories.h"
#include "platform/terminal/terminal.h"
#include "platform/terminal/terminal_display.h"

#include <unistd.h>

namespace larkspin {

void runInLines(PollLoop& loop, LinuxPorts& ports, const Started& started,
                const std::string& word) {
    Terminal terminal(
        loop, ports.lines, [&] { return ports.connection(); }, ports.files, ports.directory,
        loginName(), [&](std::string_view typed) { return ports.directories.drivePath(typed); });
    terminal.rooms.preferences.lookIn(ports.folders());
    terminal.rooms.windows.reachBy(ports.windows);
    terminal.add(
        {traceWord(ports.trace, [&](const std::string& text) { terminal.screen.tell(text); })});
    const auto note = [&](const std::string& line) { terminal.screen.note(line); };
    LinuxProgram larkspin(ports, {.dialogs = terminal.dialogs,
                                  .desktop = terminal.desktop,
                                  .host = terminal.rooms.room,
                                  .display = [] { return terminalDisplay(STDOUT_FILENO); },
                                  .fadesWindows = false,
                                  .tell = note,
                                  .note = note,
                                  .close = [&] { terminal.close(); }});
    Program& program = larkspin.program;
    terminal.triggerBy([&] { return program.shell.state.trigger; });
    program.help.showBy([&](const std::string& about) { terminal.tellHelp(about); });
    FirstSteps firstSteps(program, terminal.rooms.preferences);
    terminal.add({firstSteps.word()});
    if (terminal.isForPerson())
        firstSteps.begin();
    if (!word.empty())
        terminal.screen.tell(word);
    program.opensBy([&] {
        terminal.open(program.windows(), program.chat.recitals, [&] { program.end(); });
        if (terminal.isForPerson() && program.isFirstRun() && firstSteps.areShown())
            for (const std::string& line : firstSteps.asLines())
                terminal.screen.tell(line);
    });
    larkspin.begin(started); // once the program runs
    program.start();
    // Events run until one of them ends the process.
    loop.waitFor([] { return false; }, Nanoseconds::max());
}

} // namespace larkspin
