#include "app/command_rows.h"

#include "app/program.h"

#include <cassert>

namespace larkspin {

namespace {

constexpr bool atAnyTrigger = false; // CommandRow::afterTrigger

// Why three handlers: each scanner brings every line to a handler of its own. The first and the
// third run all the time and share the long vocabulary between them; that split means nothing. The
// second runs only while the owner has a choice to make, so that its two words count only then.

std::vector<CommandRow> rowsOfNiteScan1(Program& p) {
    return {
        {"play *", {p.playback.selection, &PlaySelection::play}},
        {"yes", {p.playback.dialogue, &SelectionDialogue::yes}},
        {"no", {p.playback.dialogue, &SelectionDialogue::no}},
        {"view", {p.playback.dialogue, &SelectionDialogue::view}},
        {"num *", {p.playback.selection, &PlaySelection::num}},
        {"dir?", {p.library.questions, &ListQuestions::dir}},
        {"media?", {p.library.questions, &ListQuestions::media}},
        {"rename *", {p.playback.songFiles, &SongFiles::renameInPlay}},
        {"delete", {p.playback.songFiles, &SongFiles::deleteInPlay}},
        {"kw *", {p.host.chores, &Chores::kw}},
        {"url *", {p.host.chores, &Chores::url}},
        {"scrn", {p.companions.noteRecital, &NoteRecital::scrn}},
        {"nshow", {p.companions.notesWindow, &NotesWindow::nshow}},
        {"sn *", {p.companions.noteCommands, &NoteCommands::sn}},
        {"note *", {p.companions.noteCommands, &NoteCommands::note}},
        {"notes?", {p.companions.noteCommands, &NoteCommands::tellCount}},
        {"clrn", {p.companions.noteCommands, &NoteCommands::clrn}},
        {"rn *", {p.companions.noteRecital, &NoteRecital::rn}},
        {"del *", {p.companions.noteCommands, &NoteCommands::del}},
        {"ut", {p.outside.machine, &MachineCommands::ut}},
        {"rstart", {p.outside.machine, &MachineCommands::rstart}},
        {"sdown", {p.outside.machine, &MachineCommands::sdown}},
        {"ot", {p.host.onlineTime, &OnlineTime::ot}},
        {"rnd *", {p.playback.selection, &PlaySelection::rndOf}},
        {"len", {p.playback.position, &Position::len}},
        {"pos", {p.playback.position, &Position::pos}},
        {"signoff", {p.host.chores, &Chores::signoff}},
        {"closeaol", {p.host.chores, &Chores::closeaol}},
        {"pt", {p.status, &StatusCommands::pt}},
        {"rt", {p.status, &StatusCommands::rt}},
        {"ver", {p.status, &StatusCommands::ver}},
        {"pr *", {p.host.chores, &Chores::pr}},
        {"color", {p.companions.colorsWindow, &ColorsWindow::color}},
        {"edit *, *", {p.companions.noteCommands, &NoteCommands::edit}},
        {"apps", {p.companions.launcherWindow, &LauncherWindow::apps}},
        {"load *", {p.companions.launcher, &Launcher::load}},
        {"rmva *", {p.companions.launcher, &Launcher::rmva}},
        {"scan *", {p.library.adding, &Adding::scan}},
        {"xlist *", {p.library.playlistCommands, &PlaylistCommands::xlist}},
        {"list *", {p.library.playlistCommands, &PlaylistCommands::list}},
        {"save *", {p.library.playlistCommands, &PlaylistCommands::save}},
        {"listadd *", {p.library.adding, &Adding::listadd}},
        {"ref *", {p.library.refresh, &Refresh::ref}},
        {"listrmv *", {p.library.removing, &Removing::listrmv}},
        {"ref", {p.mediaWindow.refreshButton, &RefreshButton::ref}},
        {"clra", {p.companions.launcher, &Launcher::clra}},
        {"ap?", {p.companions.launcher, &Launcher::tellCount}},
        {"ap *, *", {p.companions.launcher, &Launcher::ap}},
        {"scra", {p.companions.launcher, &Launcher::scra}},
        {"cinfo", {p.outside.machine, &MachineCommands::cinfo}},
        {"free *", {p.outside.machine, &MachineCommands::free}},
        {"count *", {p.library.questions, &ListQuestions::count}},
        {"fwd *", {p.playback.position, &Position::fwd}},
        {"rew *", {p.playback.position, &Position::rew}},
        {"pos *", {p.playback.position, &Position::posTo}},
        {"end", {p.playback.section, &SectionRepeat::end}},
        {"first", {p.status, &StatusCommands::first}},
        {"transfer", {p.library.adding, &Adding::transfer}},
        {"scanpc", {p.library.scan, &Scan::scanpc}},
        {"rec *, *", {p.playback.section, &SectionRepeat::rec}},
    };
}

std::vector<CommandRow> rowsOfNiteScan2(Program& p) {
    return {
        {"cancel", {p.playback.dialogue, &SelectionDialogue::cancel}},
        {"m *", {p.playback.dialogue, &SelectionDialogue::m}},
    };
}

std::vector<CommandRow> rowsOfNiteScan3(Program& p) {
    return {
        {"stop", {p.playback.transport, &Transport::stop}},
        {"rnd", {p.playback.selection, &PlaySelection::rnd}},
        {"tempo *", {p.playback.sliders, &Sliders::tempo}},
        {"exit", {p, &Program::exit}},
        {"stats", {p.status, &StatusCommands::stats}},
        {"volume *", {p.playback.sliders, &Sliders::volume}},
        {"help", {p.help, &HelpCommand::all}},
        {"help *", {p.help, &HelpCommand::about}},
        {"coms", {p.chat.commandsWindow, &CommandsWindow::coms}},
        {"info", {p.status, &StatusCommands::info}},
        {"amp", {p.outside.winamp, &Winamp::amp}},
        {"play", {p.playback.transport, &Transport::tempp3}},
        {"repeat", {p.playback.modes, &PlayModes::repeat}},
        {"shuffle", {p.playback.modes, &PlayModes::shuffle}},
        {"cont", {p.playback.modes, &PlayModes::cont}},
        {"repeatoff", {p.playback.modes, &PlayModes::repeatoff}},
        {"soff", {p.playback.modes, &PlayModes::soff}},
        {"contoff", {p.playback.modes, &PlayModes::contoff}},
        {"media", {p.mediaWindow.list, &MediaList::media}},
        {"ustat", {p.host.transfers, &Transfers::ustat}},
        {"wstop", {p.outside.winamp, &Winamp::wstop}},
        {"wpre", {p.outside.winamp, &Winamp::wpre}},
        {"wplay", {p.outside.winamp, &Winamp::wplay}},
        {"wnext", {p.outside.winamp, &Winamp::wnext}},
        {"time", {p.status, &StatusCommands::time}},
        {"date", {p.status, &StatusCommands::date}},
        {"hidewelc", {p.host.chores, &Chores::hidewelc}},
        {"imson", {p.host.chores, &Chores::imson}},
        {"imsoff", {p.host.chores, &Chores::imsoff}},
        {"ac *", {p.companions.style, &StyleCommands::ac}},
        {"fc *", {p.companions.style, &StyleCommands::fc}},
        {"font *", {p.companions.style, &StyleCommands::font}},
        {"af *", {p.companions.style, &StyleCommands::af}},
        {"ascii *", {p.companions.style, &StyleCommands::ascii}},
        {"ec *", {p.companions.style, &StyleCommands::ec}},
        {"ef *", {p.companions.style, &StyleCommands::ef}},
        {"eascii *", {p.companions.style, &StyleCommands::eascii}},
        {"pstat", {p.status, &StatusCommands::pstat}},
        {"total", {p.playback.counterCommands, &CounterCommands::total}},
        {"idle *", {p.host.idle, &IdleMode::idle}},
        {"idleoff", {p.host.idle, &IdleMode::idleoff}},
        {"x *", {p.host.moderation, &Moderation::x}},
        {"ban *", {p.host.moderation, &Moderation::ban}},
        {"unban *", {p.host.moderation, &Moderation::unban}},
        {"unx *", {p.host.moderation, &Moderation::unx}},
        {"trig *", {p.chat.triggerCommands, &TriggerCommands::trig}},
        // This command works under any trigger, so that an owner who has forgotten his can ask for
        // it.
        {"'trig?", {p.chat.triggerCommands, &TriggerCommands::tellTrigger}, atAnyTrigger},
        {"silent", {p.chat.silentMode, &SilentMode::silent}},
        {"silentoff", {p.chat.silentMode, &SilentMode::silentoff}},
        {"new", {p.host.chores, &Chores::newMail}},
        {"old", {p.host.chores, &Chores::oldMail}},
        {"sent", {p.host.chores, &Chores::sentMail}},
        {"dstat", {p.host.transfers, &Transfers::dstat}},
        {"next", {p.playback.transport, &Transport::nexp3}},
        {"pre", {p.playback.transport, &Transport::prep3}},
        {"pause", {p.playback.transport, &Transport::pause}},
        {"resume", {p.playback.transport, &Transport::resume}},
        {"adv", {p.status, &StatusCommands::adv}},
        {"filter *", {p.library.mediaFilter, &MediaFilter::filter}},
        {"filter?", {p.library.mediaFilter, &MediaFilter::tellFilter}},
        {"clearpl", {p.library.playlistCommands, &PlaylistCommands::clearpl}},
        {"clear", {p.status, &StatusCommands::clear}},
        {"newpl", {p.library.playlistCommands, &PlaylistCommands::newpl}},
        {"times", {p.playback.counterCommands, &CounterCommands::times}},
        {"aim?", {p.host.chores, &Chores::aim}},
        {"tops", {p.playback.counterCommands, &CounterCommands::tops}},
        {"top *", {p.playback.counterCommands, &CounterCommands::top}},
        {"pl?", {p.library.playlistCommands, &PlaylistCommands::tellCount}},
        {"sela", {p.status, &StatusCommands::sela}},
        {"scrd", {p.library.questions, &ListQuestions::scrd}},
        {"scrpl", {p.library.playlistCommands, &PlaylistCommands::scrpl}},
        {"pl", {p.library.playlistCommands, &PlaylistCommands::pl}},
    };
}

std::vector<CommandRow> rowsOf(Program& program, HandledBy handler) {
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

} // namespace

std::vector<CommandRow> commandRows(Program& program, HandledBy handler) {
    std::vector<CommandRow> rows = rowsOf(program, handler);
    for ([[maybe_unused]] const CommandRow& row : rows)
        assert(row.run.takesArgument() == (row.pattern.find('*') != row.pattern.npos));
    return rows;
}

} // namespace larkspin
