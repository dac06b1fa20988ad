// Start, save, exit and restart. The order of the steps holds the program together: the room
// is greeted before silent mode is set, so that the greeting is always said; no row is current
// before the media window shows; and the scanners start last, when all that a command touches
// is in place.

#include "app/program.h"
#include "chat/room.h"
#include "library/line_files.h"
#include "library/playlist.h"
#include "library/playlist_menu.h"
#include "playback/media_control.h"
#include "shell/dialogs.h"
#include "shell/event_loop.h"
#include "shell/files.h"
#include "shell/process.h"
#include "text/dates.h"
#include "text/number.h"

namespace larkspin {

namespace {

constexpr std::string_view playlistTitleHead = " playlist:  ";
constexpr std::string_view playlistEnding = ".lkl";

// The settings as they stand when the start begins.
struct Stored {
    explicit Stored(Settings& settings)
        : tempo(settings.get("tempo")), volume(settings.get("volume")),
          repeat(settings.get("repeat")), shuffle(settings.get("shuffle")),
          cont(settings.get("continue")), load(settings.get("load")),
          trigger(settings.get("trigger")), silent(settings.get("silent")),
          windowVisible(settings.get("mp3svis")), playedSeconds(settings.get("mp3sec")),
          filter(settings.get("media filter")), programSeconds(settings.get("progsec")),
          playlist(settings.get("playlist")), refreshOnLoad(settings.get("ref on load")) {}

    std::string tempo, volume, repeat, shuffle, cont, load, trigger, silent, windowVisible,
        playedSeconds, filter, programSeconds, playlist, refreshOnLoad;
};

void setFlag(bool& flag, const std::string& stored) {
    if (stored == "yes")
        flag = true;
    else if (stored.empty() || stored == "no")
        flag = false;
}

const char* yesNo(bool flag) {
    return flag ? "yes" : "no";
}

std::string counted(const std::string& seconds) {
    return numberText(numberOrZero(seconds));
}

} // namespace

void Program::start() {
    if (!machine.process.claimOnlyCopy()) {
        machine.dialogs.box(
            "i've unloaded myself because you're an idiot and you already have one open");
        machine.process.end();
    }
    phase_ = Phase::loading;
    loadWindows();
    pause(0.1);
    splash.showStatusLine(true);
    state.searchTerm = buildText() + "Loading..";

    const Stored stored(settings);
    const bool firstRun = !number(stored.load);
    const std::string loadNumber = firstRun ? "1" : stored.load;
    state.trigger = firstRun ? "'" : stored.trigger;
    if (firstRun)
        welcomeFirstRun();
    greet(loadNumber);
    state.loads = "load number:  " + loadNumber;
    settings.put("load", numberText(numberOrZero(loadNumber) + 1));

    loadLists(stored.playlist);
    fillPlaylistMenu();
    sliders.restore(stored.tempo, stored.volume);
    state.playedSeconds = counted(stored.playedSeconds);
    state.programSeconds = counted(stored.programSeconds);
    setFlag(state.silnt, stored.silent);
    setFlag(state.rep, stored.repeat);
    setFlag(state.crand, stored.shuffle);
    setFlag(state.cintz, stored.cont);
    setFlag(state.rol, stored.refreshOnLoad);
    state.resumeIndex = "-1";
    mediaWindow.mp3s.visible = stored.windowVisible == "yes";
    mediaFilter.choose(stored.filter.empty() ? "mp3" : stored.filter);
    state.pickHits = "0";
    loadCompanions();
    counters.show(counters.count(reply.yochoose(Choice::play)));
    machine.player.setVolume(-500); // until the first song brings the slider's volume

    splash.showStatusLine(false);
    pause(0.1);
    splash.hide();
    phase_ = Phase::running;
    NiteScan1.startscan();
    NiteScan3.startscan();
}

// A restart comes here with the state of the last run: every field begins anew.
void Program::loadWindows() {
    state = AppState();
    state.Timer1.connect(machine.loop, [this] { modeTick.tick(); });
    state.clock.connect(machine.loop, [this] { secondTick(); });
    state.clock.enable();
    mediaWindow.load();
    splash.open();
}

void Program::welcomeFirstRun() {
    machine.dialogs.box(
        "this must be your first time running this damn program, there should be an icon of a cd "
        "down in the system tray...this is where you see the time at on your computer...go there "
        "and right click it for a menu...the default trigger for the first load is a ' so until "
        "you change it that will be your trigger, have fun.  -moraine");
    machine.files.makeDirectory(directory.path());
    const std::tm now = machine.loop.localTime();
    settings.put("first load", longDate(now) + " at " + clockTime(now));
}

void Program::greet(const std::string& loadNumber) {
    machine.room.clearChatInput();
    reply.saychat("larkspin player - by moraine");
    pause(0.2);
    reply.saychat("load:  <b>" + loadNumber + "</b> - mp3s played:  <b>" +
                  reply.yochoose(Choice::played) + "</b>");
}

void Program::loadLists(const std::string& playlist) {
    if (playlist.empty()) {
        loadPlaylist(machine.files, directory.unnamedPlaylist(), state);
    } else {
        loadPlaylist(machine.files, directory.file(playlist), state);
        state.playlistTitle = std::string(playlistTitleHead) + playlist;
    }
    showFileCountEntry(state);
}

void Program::fillPlaylistMenu() {
    listers.File1.setPattern("*.lkl");
    if (listers.File1.setPath(directory.path()))
        fillplaylistmenu(state, listers.File1);
    else
        state.numl = "0 playlists";
    listers.File1.setPattern("*.mp3");
    listers.File1.setPath("c:\\");
}

void Program::loadCompanions() {
    loadlines(machine.files, directory.notesFile(), state.notes);
    loadlines(machine.files, directory.appPathsFile(), state.appPaths);
    loadlines(machine.files, directory.appTitlesFile(), state.appTitles);
    state.noted = "view " + std::to_string(state.notes.count()) + " notes";
    state.appsz = "view " + std::to_string(state.appTitles.count()) + " app items";
}

void Program::unload() {
    phase_ = Phase::saving;
    machine.files.makeDirectory(directory.path());
    settings.put("tempo", std::to_string(state.HScroll3));
    settings.put("volume", std::to_string(state.HScroll2));
    settings.put("repeat", yesNo(state.rep));
    settings.put("shuffle", yesNo(state.crand && !state.rep));
    settings.put("continue", yesNo(state.cintz && !state.rep && !state.crand));
    settings.put("silent", yesNo(state.silnt));
    settings.put("scan pc on load", yesNo(state.spcol));
    settings.put("ref on load", yesNo(state.rol));
    savePlaylist();
    settings.put("trigger", state.trigger);
    settings.put("mp3sec", state.playedSeconds);
    settings.put("progsec", state.programSeconds);
    settings.put("media filter", state.mediaFilter);
    settings.put("mp3svis", yesNo(mediaWindow.mp3s.visible));
    savelines(machine.files, directory.notesFile(), state.notes);
    savelines(machine.files, directory.appPathsFile(), state.appPaths);
    savelines(machine.files, directory.appTitlesFile(), state.appTitles);
    machine.files.hide(directory.settingsFile());
    unloadWindows();
    phase_ = Phase::off;
}

// A named playlist is saved only when the owner says so.
void Program::savePlaylist() {
    if (state.playlistTitle.ends_with(playlistEnding))
        settings.put("playlist", state.playlistTitle.substr(state.playlistTitle.find(':') + 3));
    else
        savelines(machine.files, directory.unnamedPlaylist(), state.masterList);
}

void Program::unloadWindows() {
    splash.hide();
    mediaWindow.unload();
    machine.player.Open("");
    NiteScan1.stopscan();
    NiteScan2.stopscan();
    NiteScan3.stopscan();
    state.Timer1.disable();
    state.clock.disable();
}

void Program::exit() {
    reply.saychat("larkspin player - unload");
    end();
}

void Program::end() {
    if (phase_ == Phase::running)
        unload();
    machine.process.end();
}

void Program::restart() {
    reply.saychat("restarting larkspin player");
    unload();
    pause(0.5);
    start();
}

} // namespace larkspin
