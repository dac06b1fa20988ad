#include "app/command_rows.h"

#include "app/program.h"

namespace larkspin {

namespace {

constexpr bool atAnyTrigger = false; // CommandRow::afterTrigger

// Why three handlers: each scanner brings every line to a handler of its own. The first and the
// third run all the time and share the long vocabulary between them; that split means nothing. The
// second runs only while the owner has a choice to make, so that its two words count only then.

std::vector<CommandRow> rowsOfNiteScan1(Program& p) {
    return {
        // clang-format off
        {"play *", [&p](const auto& text) { p.playback.selection.play(text); }},
        {"yes", [&p](const auto&) { p.playback.dialogue.yes(); }},
        {"no", [&p](const auto&) { p.playback.dialogue.no(); }},
        {"view", [&p](const auto&) { p.playback.dialogue.view(); }},
        {"num *", [&p](const auto& text) { p.playback.selection.num(text); }},
        {"dir?", [&p](const auto&) { p.library.questions.dir(); }},
        {"media?", [&p](const auto&) { p.library.questions.media(); }},
        {"rename *", [&p](const auto& text) { p.playback.songFiles.renameInPlay(text); }},
        {"delete", [&p](const auto&) { p.playback.songFiles.deleteInPlay(); }},
        {"kw *", [&p](const auto& text) { p.host.chores.kw(text); }},
        {"url *", [&p](const auto& text) { p.host.chores.url(text); }},
        {"scrn", [&p](const auto&) { p.companions.noteRecital.scrn(); }},
        {"nshow", [&p](const auto&) { p.companions.notesWindow.nshow(); }},
        {"sn *", [&p](const auto& text) { p.companions.noteCommands.sn(text); }},
        {"note *", [&p](const auto& text) { p.companions.noteCommands.note(text); }},
        {"notes?", [&p](const auto&) { p.companions.noteCommands.tellCount(); }},
        {"clrn", [&p](const auto&) { p.companions.noteCommands.clrn(); }},
        {"rn *", [&p](const auto& text) { p.companions.noteRecital.rn(text); }},
        {"del *", [&p](const auto& text) { p.companions.noteCommands.del(text); }},
        {"ut", [&p](const auto&) { p.outside.machine.ut(); }},
        {"rstart", [&p](const auto&) { p.outside.machine.rstart(); }},
        {"sdown", [&p](const auto&) { p.outside.machine.sdown(); }},
        {"ot", [&p](const auto&) { p.host.onlineTime.ot(); }},
        {"rnd *", [&p](const auto& text) { p.playback.selection.rnd(text); }},
        {"len", [&p](const auto&) { p.playback.position.len(); }},
        {"pos", [&p](const auto&) { p.playback.position.pos(); }},
        {"signoff", [&p](const auto&) { p.host.chores.signoff(); }},
        {"closeaol", [&p](const auto&) { p.host.chores.closeaol(); }},
        {"pt", [&p](const auto&) { p.status.pt(); }},
        {"rt", [&p](const auto&) { p.status.rt(); }},
        {"ver", [&p](const auto&) { p.status.ver(); }},
        {"pr *", [&p](const auto& text) { p.host.chores.pr(text); }},
        {"color", [&p](const auto&) { p.companions.colorsWindow.color(); }},
        {"edit *, *", [&p](const auto& text) { p.companions.noteCommands.edit(text); }},
        {"apps", [&p](const auto&) { p.companions.launcherWindow.apps(); }},
        {"load *", [&p](const auto& text) { p.companions.launcher.load(text); }},
        {"rmva *", [&p](const auto& text) { p.companions.launcher.rmva(text); }},
        {"scan *", [&p](const auto& text) { p.library.adding.scan(text); }},
        {"xlist *", [&p](const auto& text) { p.library.playlistCommands.xlist(text); }},
        {"list *", [&p](const auto& text) { p.library.playlistCommands.list(text); }},
        {"save *", [&p](const auto& text) { p.library.playlistCommands.save(text); }},
        {"listadd *", [&p](const auto& text) { p.library.adding.listadd(text); }},
        {"ref *", [&p](const auto& text) { p.library.refresh.ref(text); }},
        {"listrmv *", [&p](const auto& text) { p.library.removing.listrmv(text); }},
        {"ref", [&p](const auto&) { p.mediaWindow.refreshButton.ref(); }},
        {"clra", [&p](const auto&) { p.companions.launcher.clra(); }},
        {"ap?", [&p](const auto&) { p.companions.launcher.tellCount(); }},
        {"ap *, *", [&p](const auto& text) { p.companions.launcher.ap(text); }},
        {"scra", [&p](const auto&) { p.companions.launcher.scra(); }},
        {"cinfo", [&p](const auto&) { p.outside.machine.cinfo(); }},
        {"free *", [&p](const auto& text) { p.outside.machine.free(text); }},
        {"count *", [&p](const auto& text) { p.library.questions.count(text); }},
        {"fwd *", [&p](const auto& text) { p.playback.position.fwd(text); }},
        {"rew *", [&p](const auto& text) { p.playback.position.rew(text); }},
        {"pos *", [&p](const auto& text) { p.playback.position.pos(text); }},
        {"end", [&p](const auto&) { p.playback.section.end(); }},
        {"first", [&p](const auto&) { p.status.first(); }},
        {"transfer", [&p](const auto&) { p.library.adding.transfer(); }},
        {"scanpc", [&p](const auto&) { p.library.scan.scanpc(); }},
        {"rec *, *", [&p](const auto& text) { p.playback.section.rec(text); }},
        // clang-format on
    };
}

std::vector<CommandRow> rowsOfNiteScan2(Program& p) {
    return {
        {"cancel", [&p](const auto&) { p.playback.dialogue.cancel(); }},
        {"m *", [&p](const auto& text) { p.playback.dialogue.m(text); }},
    };
}

std::vector<CommandRow> rowsOfNiteScan3(Program& p) {
    return {
        // clang-format off
        {"stop", [&p](const auto&) { p.playback.transport.stop(); }},
        {"rnd", [&p](const auto&) { p.playback.selection.rnd(); }},
        {"tempo *", [&p](const auto& text) { p.playback.sliders.tempo(text); }},
        {"exit", [&p](const auto&) { p.exit(); }},
        {"stats", [&p](const auto&) { p.status.stats(); }},
        {"volume *", [&p](const auto& text) { p.playback.sliders.volume(text); }},
        {"coms", [&p](const auto&) { p.chat.commandsWindow.coms(); }},
        {"info", [&p](const auto&) { p.status.info(); }},
        {"amp", [&p](const auto&) { p.outside.winamp.amp(); }},
        {"play", [&p](const auto&) { p.playback.transport.tempp3(); }},
        {"repeat", [&p](const auto&) { p.playback.modes.repeat(); }},
        {"shuffle", [&p](const auto&) { p.playback.modes.shuffle(); }},
        {"cont", [&p](const auto&) { p.playback.modes.cont(); }},
        {"repeatoff", [&p](const auto&) { p.playback.modes.repeatoff(); }},
        {"soff", [&p](const auto&) { p.playback.modes.soff(); }},
        {"contoff", [&p](const auto&) { p.playback.modes.contoff(); }},
        {"media", [&p](const auto&) { p.mediaWindow.list.media(); }},
        {"ustat", [&p](const auto&) { p.host.transfers.ustat(); }},
        {"wstop", [&p](const auto&) { p.outside.winamp.wstop(); }},
        {"wpre", [&p](const auto&) { p.outside.winamp.wpre(); }},
        {"wplay", [&p](const auto&) { p.outside.winamp.wplay(); }},
        {"wnext", [&p](const auto&) { p.outside.winamp.wnext(); }},
        {"time", [&p](const auto&) { p.status.time(); }},
        {"date", [&p](const auto&) { p.status.date(); }},
        {"hidewelc", [&p](const auto&) { p.host.chores.hidewelc(); }},
        {"imson", [&p](const auto&) { p.host.chores.imson(); }},
        {"imsoff", [&p](const auto&) { p.host.chores.imsoff(); }},
        {"ac *", [&p](const auto& text) { p.companions.style.ac(text); }},
        {"fc *", [&p](const auto& text) { p.companions.style.fc(text); }},
        {"font *", [&p](const auto& text) { p.companions.style.font(text); }},
        {"af *", [&p](const auto& text) { p.companions.style.af(text); }},
        {"ascii *", [&p](const auto& text) { p.companions.style.ascii(text); }},
        {"ec *", [&p](const auto& text) { p.companions.style.ec(text); }},
        {"ef *", [&p](const auto& text) { p.companions.style.ef(text); }},
        {"eascii *", [&p](const auto& text) { p.companions.style.eascii(text); }},
        {"pstat", [&p](const auto&) { p.status.pstat(); }},
        {"total", [&p](const auto&) { p.playback.counterCommands.total(); }},
        {"idle *", [&p](const auto& text) { p.host.idle.idle(text); }},
        {"idleoff", [&p](const auto&) { p.host.idle.idleoff(); }},
        {"x *", [&p](const auto& text) { p.host.moderation.x(text); }},
        {"ban *", [&p](const auto& text) { p.host.moderation.ban(text); }},
        {"unban *", [&p](const auto& text) { p.host.moderation.unban(text); }},
        {"unx *", [&p](const auto& text) { p.host.moderation.unx(text); }},
        {"trig *", [&p](const auto& text) { p.chat.triggerCommands.trig(text); }},
        // This command works under any trigger, so that an owner who has forgotten his can ask for
        // it.
        {"'trig?", [&p](const auto&) { p.chat.triggerCommands.tellTrigger(); }, atAnyTrigger},
        {"silent", [&p](const auto&) { p.chat.silentMode.silent(); }},
        {"silentoff", [&p](const auto&) { p.chat.silentMode.silentoff(); }},
        {"new", [&p](const auto&) { p.host.chores.newMail(); }},
        {"old", [&p](const auto&) { p.host.chores.oldMail(); }},
        {"sent", [&p](const auto&) { p.host.chores.sentMail(); }},
        {"dstat", [&p](const auto&) { p.host.transfers.dstat(); }},
        {"next", [&p](const auto&) { p.playback.transport.nexp3(); }},
        {"pre", [&p](const auto&) { p.playback.transport.prep3(); }},
        {"pause", [&p](const auto&) { p.playback.transport.pause(); }},
        {"resume", [&p](const auto&) { p.playback.transport.resume(); }},
        {"adv", [&p](const auto&) { p.status.adv(); }},
        {"filter *", [&p](const auto& text) { p.library.mediaFilter.filter(text); }},
        {"filter?", [&p](const auto&) { p.library.mediaFilter.tellFilter(); }},
        {"clearpl", [&p](const auto&) { p.library.playlistCommands.clearpl(); }},
        {"clear", [&p](const auto&) { p.status.clear(); }},
        {"newpl", [&p](const auto&) { p.library.playlistCommands.newpl(); }},
        {"times", [&p](const auto&) { p.playback.counterCommands.times(); }},
        {"aim?", [&p](const auto&) { p.host.chores.aim(); }},
        {"tops", [&p](const auto&) { p.playback.counterCommands.tops(); }},
        {"top *", [&p](const auto& text) { p.playback.counterCommands.top(text); }},
        {"pl?", [&p](const auto&) { p.library.playlistCommands.tellCount(); }},
        {"sela", [&p](const auto&) { p.status.sela(); }},
        {"scrd", [&p](const auto&) { p.library.questions.scrd(); }},
        {"scrpl", [&p](const auto&) { p.library.playlistCommands.scrpl(); }},
        {"pl", [&p](const auto&) { p.library.playlistCommands.pl(); }},
        // clang-format on
    };
}

} // namespace

std::vector<CommandRow> commandRows(Program& program, HandledBy handler) {
    switch (handler) {
    case HandledBy::NiteScan1:
        return rowsOfNiteScan1(program);
    case HandledBy::NiteScan2:
        return rowsOfNiteScan2(program);
    case HandledBy::NiteScan3:
        return rowsOfNiteScan3(program);
    }
    return {};
}

} // namespace larkspin
