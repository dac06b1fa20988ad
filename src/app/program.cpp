#include "app/program.h"

#include "app/command_rows.h"
#include "companions/launching.h"
#include "shell/event_loop.h"
#include "shell/kept_files.h"

namespace larkspin {

// Built from the lower floors up: each part uses parts that are built before it.
Program::Program(const Machine& m)
    : machine(m), shell(m.loop, m.files, m.dataDirectory, m.fadesWindows),
      chat(shell, m.loop, m.dialogs, m.host, m.lines, m.trace),
      library(chat.core, m.files, m.directories, shell.directory),
      playback(chat.core, {.room = m.host,
                           .files = m.files,
                           .player = m.player,
                           .directory = shell.directory,
                           .NiteScan2 = chat.NiteScan2,
                           .commandsWindow = chat.commandsWindow}),
      mediaWindow(chat.core,
                  {.files = m.files,
                   .directories = m.directories,
                   .player = m.player,
                   .desktop = m.desktop,
                   .shell = shell,
                   .library = library,
                   .playback = playback,
                   .openFolder = [&launching = m.launching](
                                     const std::string& path) { return launching.open(path); }}),
      companions(chat.core, {.files = m.files,
                             .lineFiles = library.lineFiles,
                             .directory = shell.directory,
                             .directories = m.directories,
                             .launching = m.launching}),
      host(chat.core, {.client = m.host, .launcher = companions.launcher}),
      outside(chat.core, {.player = m.otherPlayer, .facts = m.facts, .power = m.power}),
      rows1_(commandRows(*this, HandledBy::NiteScan1)),
      rows2_(commandRows(*this, HandledBy::NiteScan2)),
      rows3_(commandRows(*this, HandledBy::NiteScan3)) {
    companions.windowColors.connect(windows());
    mediaWindow.frame.mp3s.onDrop = [this](const auto& paths) {
        bring(paths, BroughtFiles::Then::adding);
    };
    chat.NiteScan1.connect([this](const ChatLine& line) { chat.dispatch.handle(line, rows1_); });
    chat.NiteScan2.connect([this](const ChatLine& line) { chat.dispatch.handle(line, rows2_); });
    chat.NiteScan3.connect([this](const ChatLine& line) { chat.dispatch.handle(line, rows3_); });
    machine.lines.connect([this](const ChatLine& line) { chat.hear(line); });
    machine.files.onNews([this] { tellSoon(); });
}

Program::~Program() {
    // The machine outlives the program, and must not call it any more.
    machine.lines.connect({});
    machine.files.onNews({});
    machine.loop.cancel(telling_);
    machine.loop.cancel(settling_);
}

std::vector<Window*> Program::windows() {
    return {&mediaWindow.frame.mp3s,
            &chat.commandsWindow.larkmain,
            &playback.choices.stops,
            &companions.notesWindow.notez,
            &companions.launcherWindow.appz,
            &companions.colorsWindow.colors,
            &shell.splash.dire};
}

// The order matters. A repeated section may send the song back, which is to show on the media
// window's clock and to happen before the end of the song is looked for.
void Program::secondTick() {
    playback.checkSection();
    mediaWindow.showPosition();
    shell.countSecond(playback.isPlaying());
    playback.checkEnd();
    host.transfers.pressEndNotice();
    host.transfers.hideNewUpload();
}

} // namespace larkspin
