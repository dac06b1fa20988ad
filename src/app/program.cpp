#include "app/program.h"

#include "app/command_rows.h"
#include "playback/media_control.h"
#include "shell/event_loop.h"
#include "text/number.h"

namespace larkspin {

Program::Program(const Machine& m)
    : machine(m), directory(m.dataDirectory), settings(m.files, directory), pause(m.loop),
      reply(state, settings, m.room, m.dialogs), dispatch(state, m.room),
      triggerCommands(state, reply, m.dialogs), silentMode(state, reply), listers(m.directories),
      mediaFilter(state, listers.File1, reply, m.dialogs), scan(state, listers, m.loop, reply),
      adding(state, m.directories, scan, reply), splash(state, m.loop, m.fadesWindows),
      mediaWindow(state, settings, m.player, m.loop), sliders(state, m.player, reply),
      counters(state, settings, reply, directory),
      transport(state, settings, m.files, m.player, reply, sliders, counters, mediaWindow,
                NiteScan2),
      modes(state, reply, transport),
      randomPick(state, settings, m.loop, NiteScan2,
                 Chance(static_cast<std::uint64_t>(m.loop.now().count()))),
      selection(state, reply, transport, randomPick, NiteScan2),
      modeTick(state, m.player, reply, transport, counters, randomPick, NiteScan2),
      rows1_(commandRows(*this, HandledBy::NiteScan1)),
      rows2_(commandRows(*this, HandledBy::NiteScan2)),
      rows3_(commandRows(*this, HandledBy::NiteScan3)) {
    NiteScan1.connect([this](const ChatLine& line) { dispatch.handle(line, rows1_); });
    NiteScan2.connect([this](const ChatLine& line) { dispatch.handle(line, rows2_); });
    NiteScan3.connect([this](const ChatLine& line) { dispatch.handle(line, rows3_); });
}

void Program::hear(const ChatLine& line) {
    NiteScan1.hear(line);
    NiteScan3.hear(line);
    NiteScan2.hear(line);
}

void Program::secondTick() {
    const bool playing = machine.player.PlayState() == PlayState::playing;
    if (mediaWindow.isMini() && playing)
        mediaWindow.showPosition();
    if (playing && state.pauseMark != pausedMark)
        state.playedSeconds = numberText(numberOrZero(state.playedSeconds) + 1);
    state.programSeconds = numberText(numberOrZero(state.programSeconds) + 1);
    modeTick.checkEndWithoutMode();
}

} // namespace larkspin
